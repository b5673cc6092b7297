#include "head/LinkProtocol.h"

#include "head/Dispatcher.h"
#include "link/LinkLog.h"

#include <QCoreApplication>
#include <QSerialPort>

#include <utility>

LinkProtocol::LinkProtocol(LinkPort &port) : m_port(port) {}

LinkProtocol::~LinkProtocol() = default;

void LinkProtocol::setReader(std::unique_ptr<SerialPortReader> reader)
{
    m_reader = std::move(reader);
    connect(&m_port.port(), &QSerialPort::readyRead, m_reader.get(), &SerialPortReader::ReadPort);
    connect(&m_port, &LinkPort::strayError, m_reader.get(), &SerialPortReader::ReadPort);
}

void LinkProtocol::setDispatcher(std::unique_ptr<Dispatcher> dispatcher) { m_dispatcher = std::move(dispatcher); }

void LinkProtocol::handleFrame(const QByteArray &frame)
{
    qCDebug(lcTraffic) << m_port.port().portName() << "<" << frame;
    m_lastFrame.start();
    process(frame);
}

void LinkProtocol::abort()
{
    if (m_reader)
        m_reader->reset();
    timeOutAll();
}

void LinkProtocol::finish()
{
    if (!m_dispatcher)
        return;
    m_dispatcher->finish();
    QCoreApplication::sendPostedEvents(m_dispatcher.get(), QEvent::MetaCall);
}

void LinkProtocol::SetChanLists()
{
    if (m_dispatcher)
        m_dispatcher->SetChanLists();
}

void LinkProtocol::serve(Channel *channel) { Q_UNUSED(channel) }
