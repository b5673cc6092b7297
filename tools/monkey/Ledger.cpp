#include "tools/monkey/Ledger.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

/// The channels that copy each other's sets.
const QList<QByteArrayList> kSlaves{ { "R1", "R2" }, { "D1", "D2", "D3" } };

/// Whether a request is a set of the operator's or a client's; the others are the head's own business.
bool isOfInterest(const QByteArray &request)
{
    static const QRegularExpression own(u"^(U0:(TRON|SYSID|REMOTE):|SP\\d:DATA:0$|[^:]+:RDRG:)"_s);
    return request.count(':') >= 2 && !own.match(QString::fromLatin1(request)).hasMatch();
}

} // namespace

void Ledger::ask(const QByteArray &set)
{
    ++m_asked;
    allow(set);
    m_isSlaving = m_isSlaving || set == "U0:SLAVE:1" || set == "U0:SLAVE:2";
    const QByteArray address = set.left(set.indexOf(':'));
    for (const QByteArrayList &slaves : kSlaves) {
        for (const QByteArray &slave : m_isSlaving &&slaves.contains(address) ? slaves : QByteArrayList()) {
            if (slave != address)
                allow(slave + set.sliced(address.size()));
        }
    }
}

QStringList Ledger::unasked(const QByteArrayList &requests) const
{
    QMap<QByteArray, int> written;
    for (const QByteArray &request : requests) {
        if (isOfInterest(request))
            ++written[request];
    }
    QStringList lines;
    for (auto set = written.cbegin(); set != written.cend(); ++set) {
        if (const int allowed = m_allowed.value(set.key()); set.value() > allowed)
            lines += u"%1 was written %2 times, asked for %3"_s.arg(QString::fromUtf8(set.key()))
                         .arg(set.value())
                         .arg(allowed);
    }
    return lines;
}
