#include "simulator/console/Console.h"

#include "simulator/chassis/Chassis.h"
#include "simulator/units/Unit.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace sim {

namespace {

constexpr int kAnyNumber = std::numeric_limits<int>::max();
constexpr int kHighestRate = 100'000;

QByteArray ok(const QByteArray &text = {}) { return text.isEmpty() ? QByteArray("ok") : "ok " + text; }

QByteArray error(const QByteArray &text) { return "error: " + text; }

QByteArray text(std::string_view view) { return { view.data(), qsizetype(view.size()) }; }

} // namespace

const Console::Command Console::kCommands[] = {
    { "refuse", "refuse [ADDR[:MNEM]] [SHARE] | refuse off", "answer requests with NAK, e.g. refuse R1:FREQ 1", 0, 2,
      &Console::refuse },
    { "silent", "silent [ADDR[:MNEM]] [SHARE] | silent off", "ignore requests, e.g. silent U0:VER 3", 0, 2,
      &Console::silent },
    { "lose", "lose [ADDR[:MNEM]] [SHARE] | lose off", "carry out requests, but lose their answers, e.g. lose 20%", 0,
      2, &Console::lose },
    { "delay", "delay MS[-MS] [ADDR[:MNEM]] [PERCENT%]", "answer late; delay 0 ends it, e.g. delay 0-3000 R2 10%", 1, 3,
      &Console::delay },
    { "garble", "garble [COUNT]", "damage the next messages sent: a flipped bit or a lost CR", 0, 1, &Console::garble },
    { "flood", "flood RATE SECONDS", "unsolicited valid messages, RATE a second, e.g. flood 2000 5", 2, 2,
      &Console::flood },
    { "send", "send TEXT", "one framed message as typed, e.g. send U0:UPDT:0", 1, kAnyNumber, &Console::send },
    { "raw", "raw HEX", "bytes as they are, e.g. raw 02 52 31 0d", 1, kAnyNumber, &Console::raw },
    { "set", "set ADDR MNEM VALUE", "the chassis changes a setting and reports it, e.g. set R1 FREQ 2260.5", 3,
      kAnyNumber, &Console::set },
    { "values", "values [ADDR]", "current answer to every query, separated by tabs", 0, 1, &Console::values },
    { "signal", "signal FREQ LEVEL", "put a signal on the air or move its level, e.g. signal 2260.5 -40", 2, 2,
      &Console::signal },
    { "unplug", "unplug LINK", "pull a cable: one of those that show names, or all", 1, 1, &Console::unplug },
    { "plug", "plug LINK", "plug it in again", 1, 1, &Console::plug },
    { "power-cycle", "power-cycle [SECONDS]", "lose volatile state and boot for SECONDS, e.g. power-cycle 5", 0, 1,
      &Console::powerCycle },
    { "reconfigure", "reconfigure", "report all receiver settings between UPDT 0 and UPDT 1", 0, 0,
      &Console::reconfigure },
    { "show", "show", "state of chassis, links and channels", 0, 0, &Console::show },
    { "help", "help [COMMAND]", "the commands, or what one of them does", 0, 1, &Console::help },
    { "quit", "quit", "end the simulator", 0, 0, &Console::quit },
};

QByteArray Console::execute(const QByteArray &line)
{
    const Order order(line);
    const auto *const command = std::find_if(std::begin(kCommands), std::end(kCommands),
                                             [&order](const Command &c) { return text(c.name) == order.word(0); });
    if (command == std::end(kCommands))
        return error("unknown command \"" + order.word(0) + "\", try help");
    const qsizetype given = order.argumentCount();
    if (given < command->fewest || given > command->most)
        return error("usage: " + text(command->usage));
    return (this->*command->run)(order);
}

QByteArray Console::overview()
{
    constexpr int kColumn = 46;
    QByteArray lines;
    for (const Command &command : kCommands)
        lines += "  " + text(command.usage).leftJustified(kColumn) + text(command.purpose) + '\n';
    return lines;
}

QByteArray Console::refuse(const Order &order) { return addRule(FaultRules::Fault::Refuse, order); }

QByteArray Console::silent(const Order &order) { return addRule(FaultRules::Fault::Ignore, order); }

QByteArray Console::lose(const Order &order) { return addRule(FaultRules::Fault::Lose, order); }

QByteArray Console::addRule(FaultRules::Fault fault, const Order &order)
{
    if (order.word(1) == "off") {
        m_chassis.faults().cancel(fault);
        return ok("off");
    }
    const auto victims = order.victims(1);
    if (!victims)
        return error("SHARE is COUNT for the next ones, #COUNT for the last of them alone, or PERCENT% of all");
    m_chassis.faults().add(fault, FaultRules::Target::read(victims->target), victims->count);
    return ok((victims->target.isEmpty() ? QByteArray("every request") : victims->target) +
              (victims->share.isEmpty() ? QByteArray(" until off") : ", " + victims->share));
}

QByteArray Console::delay(const Order &order)
{
    const auto range = order.range(1);
    if (!range)
        return error("MS is a whole number up to " + QByteArray::number(FaultRules::kLongestDelayMs));
    if (range->most == 0) {
        m_chassis.faults().cancelDelays();
        return ok();
    }
    const auto victims = order.victims(2);
    if (!victims || (!victims->share.isEmpty() && !victims->share.endsWith('%')))
        return error("PERCENT is a whole number from 1 to 100");
    m_chassis.faults().delay(*range, FaultRules::Target::read(victims->target), victims->count.percent);
    return ok();
}

QByteArray Console::garble(const Order &order)
{
    const int count = order.argumentCount() > 0 ? readIndex(order.word(1)) : 1;
    if (count < 0)
        return error("COUNT is a whole number");
    m_chassis.faults().garble(count);
    return ok();
}

QByteArray Console::flood(const Order &order)
{
    const int rate = readIndex(order.word(1));
    double seconds = 0;
    if (rate < 1 || rate > kHighestRate || !order.readSeconds(2, seconds))
        return error("RATE is 1 to " + QByteArray::number(kHighestRate) + ", SECONDS 0 to 3600");
    m_chassis.flood(rate, seconds);
    return ok();
}

QByteArray Console::send(const Order &order)
{
    return m_chassis.port().sendText(order.tail(1)) ? ok() : error("lost: no client or transmit buffer full");
}

QByteArray Console::raw(const Order &order)
{
    const QByteArray hex = order.tail(1).replace(' ', "").toLower();
    const QByteArray bytes = QByteArray::fromHex(hex);
    if (bytes.toHex() != hex)
        return error("HEX is pairs of hexadecimal digits");
    return m_chassis.port().sendRaw(bytes) ? ok() : error("lost: no client or transmit buffer full");
}

QByteArray Console::set(const Order &order)
{
    Unit *const unit = m_chassis.unit(order.word(1));
    if (!unit || !unit->knows(order.word(2)))
        return error("no setting " + order.word(1) + ':' + order.word(2));
    if (!unit->change(order.word(2), order.tail(3)))
        return error(order.word(2) + " cannot become \"" + order.tail(3) + '"');
    unit->report(order.word(2));
    return ok();
}

QByteArray Console::values(const Order &order)
{
    QByteArrayList texts;
    for (Unit *const unit : m_chassis.units()) {
        if (order.argumentCount() == 0 || unit->address() == order.word(1))
            texts += unit->values();
    }
    return texts.isEmpty() ? error("no unit " + order.word(1)) : ok(texts.join('\t'));
}

QByteArray Console::signal(const Order &order)
{
    double frequency = 0;
    double level = 0;
    if (!readDecimal(order.word(1), frequency) || !readDecimal(order.word(2), level) || frequency <= 0)
        return error("FREQ in MHz, LEVEL in dBm");
    m_chassis.scene().setSignal(frequency, level);
    return ok();
}

QByteArray Console::unplug(const Order &order) { return setPlugged(order, false); }

QByteArray Console::plug(const Order &order) { return setPlugged(order, true); }

QByteArray Console::setPlugged(const Order &order, bool plugged)
{
    QString reason;
    return m_chassis.links().setPlugged(QString::fromUtf8(order.word(1)), plugged, reason) ? ok()
                                                                                           : error(reason.toUtf8());
}

QByteArray Console::powerCycle(const Order &order)
{
    double seconds = m_chassis.bootSeconds();
    if (order.argumentCount() > 0 && !order.readSeconds(1, seconds))
        return error("SECONDS is 0 to 3600");
    m_chassis.powerCycle(seconds);
    return ok();
}

QByteArray Console::reconfigure(const Order &) { return m_chassis.reconfigure() ? ok() : error("the chassis is busy"); }

QByteArray Console::show(const Order &) { return ok(m_chassis.summary()); }

QByteArray Console::help(const Order &order)
{
    QByteArrayList names;
    for (const Command &command : kCommands) {
        if (text(command.name) == order.word(1))
            return ok(text(command.usage) + " - " + text(command.purpose));
        names.append(text(command.name));
    }
    return order.argumentCount() > 0 ? error("unknown command \"" + order.word(1) + '"') : ok(names.join(' '));
}

QByteArray Console::quit(const Order &)
{
    m_wantsQuit = true;
    return ok();
}

} // namespace sim
