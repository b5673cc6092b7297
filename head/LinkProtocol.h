#pragma once

#include "link/LinkPort.h"
#include "link/SerialPortReader.h"

#include <QElapsedTimer>
#include <QObject>

#include <cstddef>
#include <memory>

class Channel;
class Dispatcher;

/// What one kind of link speaks: its reader, its transmit queue with the worker, and its receive dispatcher.
class LinkProtocol : public QObject
{
    Q_OBJECT

public:
    ~LinkProtocol() override;

    /// Time since the last frame in ms; less than 0 if there was none.
    [[nodiscard]] qint64 silentMs() const { return m_lastFrame.isValid() ? m_lastFrame.elapsed() : -1; }
    /// How many messages wait to be sent.
    [[nodiscard]] virtual std::size_t waitingCount() const = 0;

    /// The link is lost: what is queued or in flight ends unanswered, and a frame that has begun is forgotten.
    void abort();
    /// The program ends: messages on their way to the dispatcher are deleted and reach no channel.
    void finish();

    /// The channels of the link have changed.
    void SetChanLists();
    /// Attaches the link to a channel of another link that the remote client is served from.
    virtual void serve(Channel *channel);

protected:
    explicit LinkProtocol(LinkPort &port);

    [[nodiscard]] LinkPort &port() const { return m_port; }
    void setReader(std::unique_ptr<SerialPortReader> reader);
    void setDispatcher(std::unique_ptr<Dispatcher> dispatcher);
    /// Notes a frame and hands it to process().
    void handleFrame(const QByteArray &frame);

    virtual void process(const QByteArray &frame) = 0;
    /// Ends everything that is queued or in flight without an answer.
    virtual void timeOutAll() = 0;

private:
    LinkPort &m_port;
    QElapsedTimer m_lastFrame;
    std::unique_ptr<SerialPortReader> m_reader; ///< none on a link that only sends
    std::unique_ptr<Dispatcher> m_dispatcher;   ///< none there either
};
