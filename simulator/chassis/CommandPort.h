#pragma once

#include "simulator/chassis/FaultRules.h"
#include "simulator/links/FrameCutter.h"

#include <QList>
#include <QObject>

namespace sim {

class Link;
class Trace;
class Unit;

/// The chassis' side of the standard protocol on one link: requests in, answers and unprompted messages out.
class CommandPort : public QObject
{
    Q_OBJECT

public:
    /// All of these must outlive the port.
    CommandPort(Link &link, FaultRules &faults, Trace &trace, QObject *parent = nullptr);

    /// Adds a unit that answers here, with its start values; its reports go out on this port. Units are not owned.
    /// False with `error` set if it does not take the values.
    [[nodiscard]] bool addUnit(Unit *unit, const QJsonObject &values, QString &error);
    [[nodiscard]] const QList<Unit *> &units() const { return m_units; }
    /// Null if there is no such address, or no card behind it.
    [[nodiscard]] Unit *unit(const QByteArray &address) const;

    /// A chassis that boots neither listens nor speaks.
    void setAwake(bool awake);
    [[nodiscard]] bool isAwake() const { return m_awake; }

    /// Sends one framed message, whatever its text. False if it was lost.
    bool sendText(const QByteArray &text);
    /// Sends bytes just as they are. False if they were lost.
    bool sendRaw(const QByteArray &bytes);
    /// Passes simulated time: each answer leaves when its own delay is over, also before earlier ones.
    void step(int ms);

private:
    struct LateAnswer
    {
        int leftMs;
        QByteArray text;
    };

    void receive(const QByteArray &bytes);
    void handleRequest(const QByteArray &text);
    /// The answer's text; empty for none.
    [[nodiscard]] QByteArray answerTo(const QByteArray &address, const QByteArray &mnemonic, const QByteArray *data);

    Link &m_link;
    FaultRules &m_faults;
    Trace &m_trace;
    FrameCutter m_cutter;
    QList<Unit *> m_units;
    QList<LateAnswer> m_lateAnswers;
    bool m_awake = false;
};

} // namespace sim
