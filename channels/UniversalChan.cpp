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
    m_tmoipList = list.split(u',', Qt::SkipEmptyParts);
    for (const QString &item : std::as_const(m_tmoipList))
        link()->generateTmoipCard(item.section(u' ', 0, 0));
}
