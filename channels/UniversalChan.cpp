#include "channels/UniversalChan.h"

#include "link/SerialPortController.h"

#include <utility>

UniversalChan::UniversalChan(QObject *parent, const QString &number, SerialPortController *link)
    : Channel(parent, ChanType, number, link, kCatalogue)
{
}

void UniversalChan::processSpecial(int row, const Report &report)
{
    if (report.refused)
        return;
    if (row == at(Commands::CLST))
        processCardList(report.data);
    else if (row == at(Commands::TLST))
        processTmoipList(report.data);
}

void UniversalChan::processCardList(const QString &cardList)
{
    // A second list would create every channel twice.
    if (std::exchange(m_cardListReceived, true))
        return;
    store(at(Commands::CLST), cardList);
    link()->processCardList(cardList);
}

void UniversalChan::processTmoipList(const QString &list)
{
    if (!m_tmoipList.isEmpty())
        return;
    store(at(Commands::TLST), list);
    for (const QString &item : list.split(u',')) {
        if (const QString entry = item.trimmed(); !entry.isEmpty())
            m_tmoipList.append(entry);
    }
    for (const QString &entry : std::as_const(m_tmoipList))
        link()->generateTmoipCard(entry.section(u' ', 0, 0));
}
