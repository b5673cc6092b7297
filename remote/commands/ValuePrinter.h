#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QRegularExpression>
#include <QStringList>

namespace remote {

class Output;

/// Prints values from the head that match one of the patterns, one line each.
class ValuePrinter
{
public:
    /// @param patterns wildcards over "ADDRESS:MNEMONIC", without regard to case; none means every value
    ValuePrinter(Output &output, const QStringList &patterns, bool json);

    /// What is wrong with a pattern; empty if nothing is.
    [[nodiscard]] static QString patternProblem(const QString &pattern);

    /// Prints @p frame if it holds a wanted value. @return whether it did
    bool print(const QDateTime &time, const QByteArray &link, const QByteArray &frame);

private:
    [[nodiscard]] bool isWanted(const QByteArray &key) const;

    Output &m_output;
    QList<QRegularExpression> m_patterns;
    bool m_json;
};

} // namespace remote
