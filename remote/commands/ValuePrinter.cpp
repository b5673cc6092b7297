#include "remote/commands/ValuePrinter.h"

#include "remote/commands/Output.h"
#include "remote/files/Json.h"
#include "remote/wire/Escaping.h"
#include "remote/wire/Message.h"

#include <algorithm>

#include <nlohmann/json.hpp>

using namespace Qt::StringLiterals;

namespace remote {

namespace {

/// Eye blocks and spectra are too long to read.
QByteArray shortened(const Message &message)
{
    if (message.mnemonic == "EYEP" || message.mnemonic == "RFFT")
        return '<' + QByteArray::number(message.data.size()) + " digits>";
    return Escaping::printable(message.data);
}

QRegularExpression wildcard(const QString &pattern)
{
    return QRegularExpression::fromWildcard(pattern, Qt::CaseInsensitive);
}

} // namespace

ValuePrinter::ValuePrinter(Output &output, const QStringList &patterns, bool json) : m_output(output), m_json(json)
{
    for (const QString &pattern : patterns)
        m_patterns.append(wildcard(pattern));
}

QString ValuePrinter::patternProblem(const QString &pattern)
{
    return wildcard(pattern).isValid() ? QString() : u"\"%1\" is no pattern"_s.arg(pattern);
}

bool ValuePrinter::print(const QDateTime &time, const QByteArray &link, const QByteArray &frame)
{
    const auto message = Message::parse(frame);
    const bool holdsValue =
        message && (message->kind == Message::Kind::Value ||
                    (message->kind == Message::Kind::Acknowledged && message->key() != "U0:REMOTE"));
    if (!holdsValue || !isWanted(message->key()))
        return false;
    if (m_json) {
        m_output.line(Json::line({ { "time", time.toString(Qt::ISODateWithMs).toStdString() },
                                   { "link", Json::text(link) },
                                   { "address", Json::text(message->address) },
                                   { "mnemonic", Json::text(message->mnemonic) },
                                   { "value", Json::text(message->data) } }));
    } else {
        const QByteArray key = m_output.painted(Escaping::printable(message->key()), Output::Colour::Cyan);
        m_output.line(time.toLocalTime().toString(u"HH:mm:ss.zzz"_s).toLatin1() + ' ' + link + ' ' + key + ' ' +
                      shortened(*message));
    }
    return true;
}

bool ValuePrinter::isWanted(const QByteArray &key) const
{
    const QString text = QString::fromLocal8Bit(key);
    const auto matches = [&text](const QRegularExpression &pattern) { return pattern.match(text).hasMatch(); };
    return m_patterns.isEmpty() || std::ranges::any_of(m_patterns, matches);
}

} // namespace remote
