#include "simulator/units/Unit.h"

#include <utility>

namespace sim {

Unit::Unit(const QByteArray &address, std::span<const SettingRow> rows, QObject *parent)
    : QObject(parent)
    , m_address(address)
    , m_rows(rows)
{
    for (const SettingRow &row : m_rows)
        m_values.append(QByteArray(row.initial.data(), qsizetype(row.initial.size())));
}

std::optional<QByteArray> Unit::query(QByteArrayView mnemonic)
{
    const qsizetype index = indexOf(mnemonic);
    if (index < 0 || m_rows[index].check == Check::Action || m_rows[index].has(Inner))
        return std::nullopt;
    if (m_rows[index].has(Measured))
        m_values[index] = measure(m_rows[index]);
    return m_values[index];
}

bool Unit::set(QByteArrayView mnemonic, const QByteArray &value)
{
    const qsizetype index = indexOf(mnemonic);
    if (index < 0)
        return false;
    const SettingRow &row = m_rows[index];
    if (row.check == Check::Action)
        return perform(row, value);
    if (row.check == Check::ReadOnly || row.has(Inner) || !isAcceptable(row, value))
        return false;
    put(index, value);
    return true;
}

bool Unit::change(QByteArrayView mnemonic, const QByteArray &value)
{
    const qsizetype index = indexOf(mnemonic);
    if (index < 0 || m_rows[index].check == Check::Action || !isAcceptable(m_rows[index], value))
        return false;
    put(index, value);
    return true;
}

std::optional<QByteArray> Unit::lookUp(QByteArrayView, const QByteArray &) const { return std::nullopt; }

QByteArray Unit::reply(QByteArrayView mnemonic)
{
    return m_address + ':' + mnemonic.toByteArray() + ':' + query(mnemonic).value_or(QByteArray());
}

QByteArrayList Unit::values()
{
    QByteArrayList texts;
    for (const SettingRow &row : m_rows) {
        if (query(row.name()))
            texts.append(reply(row.name()));
    }
    return texts;
}

void Unit::reportSideEffects()
{
    for (const QByteArray &mnemonic : std::exchange(m_sideEffects, {}))
        report(mnemonic);
}

QJsonObject Unit::storedState() const
{
    QJsonObject state;
    for (const QByteArray &mnemonic : storedMnemonics())
        state.insert(QString::fromLatin1(mnemonic), QString::fromUtf8(value(mnemonic)));
    return state;
}

QByteArrayList Unit::restoreState(const QJsonObject &state)
{
    const QJsonObject before = storedState();
    for (const QByteArray &mnemonic : storedMnemonics()) {
        const QJsonValue stored = state.value(QString::fromLatin1(mnemonic));
        const QByteArray text = stored.toString().toUtf8();
        if (stored.isString() && text != value(mnemonic)) [[maybe_unused]]
            const bool taken = change(mnemonic, text);
    }
    m_sideEffects.clear();
    const QJsonObject after = storedState();
    QByteArrayList changed = storedMnemonics();
    changed.removeIf([&](const QByteArray &mnemonic) {
        const QString key = QString::fromLatin1(mnemonic);
        return before.value(key) == after.value(key);
    });
    return changed;
}

QByteArray Unit::initialise(const QJsonObject &values)
{
    for (const QString &key : values.keys()) {
        if (!knows(key.toLatin1()))
            return key.toLatin1();
    }
    // In the order of the table: a list comes before the settings that are checked against it.
    for (const SettingRow &row : m_rows) {
        const QJsonValue initial = values.value(QString::fromLatin1(row.name()));
        const bool taken = initial.isString() && change(row.name(), initial.toString().toUtf8());
        if (!initial.isUndefined() && !taken)
            return row.name().toByteArray();
    }
    m_sideEffects.clear();
    return {};
}

QByteArrayList Unit::storedMnemonics() const
{
    QByteArrayList mnemonics;
    for (const SettingRow &row : m_rows) {
        if (row.has(Stored))
            mnemonics.append(row.name().toByteArray());
    }
    return mnemonics;
}

void Unit::loseVolatileState()
{
    for (qsizetype index = 0; index < m_values.size(); ++index) {
        const std::string_view initial = m_rows[index].initial;
        if (m_rows[index].has(Volatile))
            put(index, QByteArray(initial.data(), qsizetype(initial.size())));
    }
}

bool Unit::accepts(const SettingRow &, const QByteArray &) const { return false; }

bool Unit::perform(const SettingRow &, const QByteArray &) { return false; }

void Unit::applied(const SettingRow &) {}

QByteArray Unit::measure(const SettingRow &row) const { return value(row.name()); }

void Unit::changeAlong(QByteArrayView mnemonic, const QByteArray &value)
{
    if (value != this->value(mnemonic) && change(mnemonic, value))
        m_sideEffects.append(mnemonic.toByteArray());
}

QByteArray Unit::value(QByteArrayView mnemonic) const { return m_values.value(indexOf(mnemonic)); }

qsizetype Unit::indexOf(QByteArrayView mnemonic) const
{
    for (qsizetype index = 0; index < qsizetype(m_rows.size()); ++index) {
        if (m_rows[index].name() == mnemonic)
            return index;
    }
    return -1;
}

bool Unit::isAcceptable(const SettingRow &row, const QByteArray &value) const
{
    switch (row.check) {
    case Check::ReadOnly:
        return !row.has(Measured);
    case Check::Own:
        return accepts(row, value);
    default:
        return acceptedByRow(row, value);
    }
}

void Unit::put(qsizetype index, const QByteArray &value)
{
    m_values[index] = value;
    applied(m_rows[index]);
}

} // namespace sim
