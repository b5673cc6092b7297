#pragma once

#include "simulator/chassis/FaultRules.h"
#include "simulator/links/FrameCutter.h"

#include <QList>
#include <QObject>

namespace sim {

class Link;
class Trace;
class UnitSet;

/// The chassis' end of the standard protocol on one link: requests in, answers and unsolicited messages out.
class CommandPort : public QObject
{
    Q_OBJECT

public:
    /// All of these must outlive the port. Reports of the units are sent here.
    CommandPort(Link &link, const UnitSet &units, FaultRules &faults, Trace &trace, QObject *parent = nullptr);

    /// While asleep the port neither answers nor reports.
    void setAwake(bool awake);
    [[nodiscard]] bool isAwake() const { return m_awake; }

    /// Sends one framed message; the text is not checked. False if it was lost.
    bool sendText(const QByteArray &text);
    /// Sends bytes unframed and unchanged. False if they were lost.
    bool sendRaw(const QByteArray &bytes);
    /// Advances simulated time: each delayed answer leaves after its own delay and may overtake earlier ones.
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
