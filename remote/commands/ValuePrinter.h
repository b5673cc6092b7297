#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QRegularExpression>
#include <QStringList>

namespace remote {

class Output;

/// Shows the values that the head tells, a line each, as far as they match one of the patterns.
class ValuePrinter
{
public:
    /// @param patterns wildcards over "ADDRESS:MNEMONIC", without regard to case; none means every value
    ValuePrinter(Output &output, const QStringList &patterns, bool json);

    /// What is wrong with a pattern; empty if nothing is.
    [[nodiscard]] static QString patternProblem(const QString &pattern);

    /// Shows @p frame if it tells a value that is wanted. @return whether it was shown
    bool print(const QDateTime &time, const QByteArray &link, const QByteArray &frame);

private:
    [[nodiscard]] bool isWanted(const QByteArray &key) const;

    Output &m_output;
    QList<QRegularExpression> m_patterns;
    bool m_json;
};

} // namespace remote
