#pragma once

#include "simulator/units/SettingRow.h"

#include <QByteArrayList>
#include <QJsonObject>
#include <QObject>

#include <optional>
#include <span>

namespace sim {

/// One addressable function of the chassis: a table of settings, and the rules for queries and sets. A derived class
/// adds its table and overrides what differs.
class Unit : public QObject
{
    Q_OBJECT

public:
    /// `rows` must outlive the unit.
    Unit(const QByteArray &address, std::span<const SettingRow> rows, QObject *parent = nullptr);

    [[nodiscard]] const QByteArray &address() const { return m_address; }
    [[nodiscard]] bool knows(QByteArrayView mnemonic) const { return indexOf(mnemonic) >= 0; }

    /// Whether the card is there; without it the unit neither answers nor reports.
    [[nodiscard]] bool isFitted() const { return m_isFitted; }
    void setFitted(bool fitted) { m_isFitted = fitted; }

    /// The answer to a query; nothing if the card does not answer that mnemonic.
    [[nodiscard]] std::optional<QByteArray> query(QByteArrayView mnemonic);
    /// A set request from the link. False refuses it and changes nothing.
    [[nodiscard]] bool set(QByteArrayView mnemonic, const QByteArray &value);
    /// A change made by the chassis itself. Read-only settings can change too, measured values cannot; the value is
    /// checked as that of a set. The caller reports the change.
    [[nodiscard]] bool change(QByteArrayView mnemonic, const QByteArray &value);
    /// The answer to a query with an argument; nothing if the card does not know the query or the argument.
    [[nodiscard]] virtual std::optional<QByteArray> lookUp(QByteArrayView mnemonic, const QByteArray &argument) const;
    /// The reply text "address:mnemonic:value".
    [[nodiscard]] virtual QByteArray reply(QByteArrayView mnemonic);
    /// The current answer to every query, as reply texts.
    [[nodiscard]] virtual QByteArrayList values();
    /// Sends the current value as an unsolicited message.
    void report(QByteArrayView mnemonic) { Q_EMIT reported(reply(mnemonic)); }
    /// Reports the settings that changed as a side effect since the last call. A set does not report them itself, so
    /// that its answer leaves first.
    void reportSideEffects();

    /// The values of all settings that belong to a preset.
    [[nodiscard]] QJsonObject storedState() const;
    /// Restores the values from `storedState` and returns the mnemonics whose value changed, side effects included.
    /// Skips values that a set would refuse.
    [[nodiscard]] QByteArrayList restoreState(const QJsonObject &state);
    /// Start values from a family. Returns the first mnemonic that is unknown or not accepted, empty if none.
    [[nodiscard]] QByteArray initialise(const QJsonObject &values);
    /// Every mnemonic that belongs to a preset, in the order of the table.
    [[nodiscard]] QByteArrayList storedMnemonics() const;

    /// Power loss: volatile settings return to their start values.
    virtual void loseVolatileState();

Q_SIGNALS:
    /// An unsolicited message, "address:mnemonic:value".
    void reported(const QByteArray &text);

protected:
    /// Decides on a set of an `Own` row.
    [[nodiscard]] virtual bool accepts(const SettingRow &row, const QByteArray &value) const;
    /// Carries out an `Action` row; false refuses.
    [[nodiscard]] virtual bool perform(const SettingRow &row, const QByteArray &value);
    /// Called after a setting took a new value.
    virtual void applied(const SettingRow &row);
    /// The value of a `Measured` row.
    [[nodiscard]] virtual QByteArray measure(const SettingRow &row) const;
    /// A change as a side effect of another one, to be reported later.
    void changeAlong(QByteArrayView mnemonic, const QByteArray &value);

    /// The stored value; empty for an unknown mnemonic.
    [[nodiscard]] QByteArray value(QByteArrayView mnemonic) const;
    [[nodiscard]] bool isOn(QByteArrayView mnemonic) const { return value(mnemonic) == "1"; }

private:
    [[nodiscard]] qsizetype indexOf(QByteArrayView mnemonic) const;
    [[nodiscard]] bool isAcceptable(const SettingRow &row, const QByteArray &value) const;
    void put(qsizetype index, const QByteArray &value);

    QByteArray m_address;
    std::span<const SettingRow> m_rows;
    QByteArrayList m_values;
    QByteArrayList m_sideEffects; // mnemonics
    bool m_isFitted = true;
};

} // namespace sim
