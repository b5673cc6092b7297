#include "link/ClientReader.h"

#include <QSerialPort>

#include <utility>

namespace {

constexpr qsizetype kMaxFrameSize = 4096; ///< a client's frame is a line of text; a longer one is noise
constexpr qint64 kPiece = 256;
constexpr int kHeldBackMs = 2;

} // namespace

ClientReader::ClientReader(QSerialPort *port, FrameHandler frameHandler, std::function<bool()> isHeldBack)
    : SerialPortReader(port, FrameDecoder(FrameDecoder::kCr, kMaxFrameSize), std::move(frameHandler))
    , m_isHeldBack(std::move(isHeldBack))
{
    m_readAgainTmr.setSingleShot(true);
    connect(&m_readAgainTmr, &QTimer::timeout, this, &SerialPortReader::ReadPort);
}

void ClientReader::reset()
{
    SerialPortReader::reset();
    m_frames.clear();
}

/// Runs behind the events that the message before has caused, so it sees their effect.
void ClientReader::read()
{
    if (m_frames.isEmpty())
        decoder().feed(port().read(kPiece), [this](const QByteArray &frame) { m_frames.enqueue(frame); });
    const bool isHeldBack = m_isHeldBack();
    if (!isHeldBack && !m_frames.isEmpty())
        handle(m_frames.dequeue());
    if (!m_frames.isEmpty() || port().bytesAvailable() > 0)
        m_readAgainTmr.start(isHeldBack ? kHeldBackMs : 0);
}
