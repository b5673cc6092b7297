#pragma once

#include <QHash>
#include <QString>

/// Values of mnemonics that a channel's catalogue does not hold: what the card reported, and what the remote client has
/// set. Bounded, because a client may name whatever it likes.
class UnknownSettings
{
public:
    /// The card has reported a value.
    /// @param isLatin1 whether it was not UTF-8 on the wire
    void report(const QString &mnemonic, const QString &value, bool isLatin1);
    /// The client sets a value; it is in force once the card reports it.
    void request(const QString &mnemonic, const QString &value, bool isLatin1);
    /// The card has refused or not answered what was requested.
    void refuse(const QString &mnemonic);
    /// The card was queried for a value.
    void expect(const QString &mnemonic);
    /// Forgets what was expected and never reported: it may have been queried while the card was away.
    void forgetExpected();

    [[nodiscard]] bool contains(const QString &mnemonic) const { return m_values.contains(mnemonic); }
    /// What was reported or requested last; null if there was neither.
    [[nodiscard]] QString value(const QString &mnemonic) const { return m_values.value(mnemonic).latest; }
    [[nodiscard]] bool isLatin1(const QString &mnemonic) const { return m_values.value(mnemonic).isLatin1; }

private:
    struct Value
    {
        QString latest;
        QString inForce; ///< what the card reported last; null if it reported nothing
        bool isLatin1 = false;
    };

    void store(const QString &mnemonic, const Value &value);

    QHash<QString, Value> m_values;
};
