#pragma once

#include "simulator/units/SettingRow.h"

#include <QByteArrayList>
#include <QJsonObject>
#include <QObject>

#include <optional>
#include <span>

namespace sim {

/// One addressable function of the chassis: a table of settings, and the rules to query and to set them.
/// A kind of unit is its table plus what differs from the rules here.
class Unit : public QObject
{
    Q_OBJECT

public:
    /// `rows` must outlive the unit.
    Unit(const QByteArray &address, std::span<const SettingRow> rows, QObject *parent = nullptr);

    [[nodiscard]] const QByteArray &address() const { return m_address; }
    [[nodiscard]] bool knows(QByteArrayView mnemonic) const { return indexOf(mnemonic) >= 0; }

    /// Whether the card is in its place; without it nobody answers and nothing is reported.
    [[nodiscard]] bool isFitted() const { return m_isFitted; }
    void setFitted(bool fitted) { m_isFitted = fitted; }

    /// The value a query is answered with; nothing if the card has no answer to that mnemonic.
    [[nodiscard]] std::optional<QByteArray> query(QByteArrayView mnemonic);
    /// A set from the link. False is a refusal and changes nothing.
    [[nodiscard]] bool set(QByteArrayView mnemonic, const QByteArray &value);
    /// A change by the chassis itself: also of what clients cannot set, but never of measured values or to a value
    /// that a set would be refused for. The caller reports it.
    [[nodiscard]] bool change(QByteArrayView mnemonic, const QByteArray &value);
    /// The value of a query that carries an argument; nothing if the card knows no such query or argument.
    [[nodiscard]] virtual std::optional<QByteArray> lookUp(QByteArrayView mnemonic, const QByteArray &argument) const;
    /// The reply text "address:mnemonic:value".
    [[nodiscard]] virtual QByteArray reply(QByteArrayView mnemonic);
    /// The current answer to every query, as reply texts.
    [[nodiscard]] virtual QByteArrayList values();
    /// Sends the present value unprompted.
    void report(QByteArrayView mnemonic) { Q_EMIT reported(reply(mnemonic)); }
    /// Sends what has changed along with other settings since the last call. A set never does so itself: its answer
    /// leaves first.
    void reportSideEffects();

    /// The settings that belong into a preset.
    [[nodiscard]] QJsonObject storedState() const;
    /// Takes over what `storedState` gave and returns the mnemonics whose value changed, side effects included.
    /// Values a set would be refused for are passed over.
    [[nodiscard]] QByteArrayList restoreState(const QJsonObject &state);
    /// Start values from a family. Returns the first mnemonic that is unknown or not accepted, empty if none.
    [[nodiscard]] QByteArray initialise(const QJsonObject &values);
    /// Every mnemonic that belongs into a preset, in the table's order.
    [[nodiscard]] QByteArrayList storedMnemonics() const;

    /// What power loss does: volatile settings start over.
    virtual void loseVolatileState();

Q_SIGNALS:
    /// An unprompted message, "address:mnemonic:value".
    void reported(const QByteArray &text);

protected:
    /// Decides on a set of an `Own` row.
    [[nodiscard]] virtual bool accepts(const SettingRow &row, const QByteArray &value) const;
    /// Does what an `Action` row is for; false refuses.
    [[nodiscard]] virtual bool perform(const SettingRow &row, const QByteArray &value);
    /// Called after a setting took a new value.
    virtual void applied(const SettingRow &row);
    /// The value of a `Measured` row.
    [[nodiscard]] virtual QByteArray measure(const SettingRow &row) const;
    /// A change that another one brings about, to be reported later.
    void changeAlong(QByteArrayView mnemonic, const QByteArray &value);

    /// The kept value; empty for an unknown mnemonic.
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
