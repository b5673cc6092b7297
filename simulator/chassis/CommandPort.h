#pragma once

#include "simulator/chassis/FaultRules.h"
#include "simulator/links/FrameCutter.h"

#include <QList>
#include <QObject>

namespace sim {

class Link;
class Trace;
class UnitSet;

/// The chassis' side of the standard protocol on one link: requests in, answers and unprompted messages out.
class CommandPort : public QObject
{
    Q_OBJECT

public:
    /// All of these must outlive the port. What the units report goes out here.
    CommandPort(Link &link, const UnitSet &units, FaultRules &faults, Trace &trace, QObject *parent = nullptr);

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

    Link &m_link;
    const UnitSet &m_units;
    FaultRules &m_faults;
    Trace &m_trace;
    FrameCutter m_cutter;
    QList<LateAnswer> m_lateAnswers;
    bool m_awake = false;
};

} // namespace sim
