#pragma once

#include "simulator/links/FrameCutter.h"
#include "simulator/links/Trace.h"

#include <QObject>

#include <array>

namespace sim {

class Link;

/// The cable between the head and a remote client: what one of two terminals sends comes out of the other. An end that
/// is open but not read holds the other one back; what is sent to an end that nobody holds open is lost. The bytes go
/// on as they come, frames or not; the trace shows the whole frames among them under the role of the head's link.
class NullModem : public QObject
{
    Q_OBJECT

public:
    NullModem(Link &head, Link &client, Trace &trace, QObject *parent = nullptr);

    /// Holds writers back or lets them go on; to be called every step.
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
