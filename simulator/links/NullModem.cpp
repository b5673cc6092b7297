#include "simulator/links/NullModem.h"

#include "simulator/links/Link.h"

namespace sim {

namespace {
/// More than the line sends in a step, so that it never runs dry. With both terminal buffers, at most some 64 KiB are
/// in transit.
constexpr qsizetype kMostWaiting = qsizetype(16) * 1024;
} // namespace

NullModem::NullModem(Link &head, Link &client, Trace &trace, QObject *parent)
    : QObject(parent)
    , m_name(head.role())
    , m_trace(trace)
    , m_ways{ { { &head, &client, Trace::Direction::Received, {} }, { &client, &head, Trace::Direction::Sent, {} } } }
{
    for (Way &way : m_ways) {
        connect(way.from, &Link::received, this, [this, &way](const QByteArray &bytes) { forward(way, bytes); });
        for (const Link *link : { &head, &client })
            connect(link, &Link::interrupted, this, [this, &way, link] { interrupt(way, link); });
    }
}

void NullModem::step()
{
    for (const Way &way : m_ways)
        way.from->holdBack(way.to->pending() >= kMostWaiting);
}

void NullModem::forward(Way &way, const QByteArray &bytes)
{
    const bool sent = way.to->send(bytes);
    if (way.to->pending() >= kMostWaiting)
        way.from->holdBack(true);
    // The trace shows everything the head sends, but of the client only what reached the line.
    if (!sent && way.direction == Trace::Direction::Sent) {
        way.cutter.reset();
        return;
    }
    for (const QByteArray &text : way.cutter.feed(bytes))
        m_trace.write(way.direction, m_name, text);
}

void NullModem::interrupt(Way &way, const Link *link)
{
    // Bytes blocked for a client that left must not reach the next one.
    if (link == way.to && !link->hasClient()) {
        way.from->takeWaiting();
        way.from->holdBack(false);
    }
    if (link == way.from || way.direction == Trace::Direction::Sent)
        way.cutter.reset();
}

} // namespace sim
