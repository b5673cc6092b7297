#pragma once

#include "simulator/links/FrameCutter.h"
#include "simulator/links/Trace.h"

#include <QObject>

#include <array>

namespace sim {

class Link;

/// The cable between the head and a remote client: bytes written to one terminal arrive at the other. An end that is
/// open but not read blocks the other one; bytes sent to an end that nobody has open are lost. Bytes are passed on
/// unchanged; the trace shows the complete frames among them under the role of the head's link.
class NullModem : public QObject
{
    Q_OBJECT

public:
    NullModem(Link &head, Link &client, Trace &trace, QObject *parent = nullptr);

    /// Blocks or unblocks the writers; to be called every step.
    void step();

private:
    struct Way
    {
        Link *from;
        Link *to;
        Trace::Direction direction;
        FrameCutter cutter;
    };

    void forward(Way &way, const QByteArray &bytes);
    void interrupt(Way &way, const Link *link);

    QString m_name;
    Trace &m_trace;
    std::array<Way, 2> m_ways;
};

} // namespace sim
