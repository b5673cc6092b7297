#pragma once

#include <QString>
#include <QStringList>

/// One addressable microcontroller or programmable device of a card.
class Micro
{
public:
    /// Stands for a text that the card did not report.
    static inline const QString kNotAvailable = QStringLiteral("N/A");

    /// @param kind    for example "MPU", "FPGA1" or "DEMOD"
    /// @param version version of its program
    Micro(const QStringList &addresses, const QString &kind, const QString &version);

    void AddAddress(const QString &address) { m_addresses.append(address); }

    [[nodiscard]] const QString &kind() const { return m_kind; }

    /// Addresses joined by "/", kind and version, separated by ";".
    [[nodiscard]] QString GetFormattedMicroInfoString() const;

private:
    QString m_kind;
    QString m_version;
    QStringList m_addresses;
};
