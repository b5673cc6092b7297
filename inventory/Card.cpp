#include "inventory/Card.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

QString orNotAvailable(const QString &text) { return text.isEmpty() ? Micro::kNotAvailable : text; }

} // namespace

Card::Card(const QString &entry)
{
    const QStringList fields = entry.split(u' ');
    if (fields.size() >= 6) {
        const QString &kind = fields[1];
        setTexts(kind.contains("K412W"_L1) ? u"QLN412W"_s : fields[3], fields[4], fields[5]);
        AddMicro(Micro({ fields[0] }, kind, fields[2]));
    } else if (fields.size() == 5) {
        setTexts(fields[3], fields[4], {});
        AddMicro(Micro({ fields[0] }, fields[0].contains("DEMOD"_L1) ? u"DEMOD"_s : fields[1], fields[2]));
    } else if (fields.size() == 3) {
        setTexts(fields[1], {}, {});
        AddMicro(Micro({ fields[0] }, u"FPGA "_s + fields[1], fields[2]));
        m_namesModelOnly = true;
    }
}

void Card::setTexts(const QString &model, const QString &serialNumber, const QString &thirdText)
{
    m_model = orNotAvailable(model);
    m_serialNumber = orNotAvailable(serialNumber);
    m_thirdText = orNotAvailable(thirdText);
}

void Card::join(const Card &entry)
{
    if (m_namesModelOnly && !entry.m_namesModelOnly) {
        setTexts(entry.m_model, entry.m_serialNumber, entry.m_thirdText);
        m_namesModelOnly = false;
    }
    m_micros += entry.m_micros;
}

QString Card::GetFormattedCardInfoString() const
{
    QString text = m_model + u';' + m_serialNumber + u';' + m_thirdText + u';';
    for (const Micro &micro : m_micros)
        text += micro.GetFormattedMicroInfoString();
    return text;
}
