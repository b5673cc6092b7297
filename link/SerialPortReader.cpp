#include "link/SerialPortReader.h"

#include <QSerialPort>

#include <utility>

SerialPortReader::SerialPortReader(QSerialPort *port, FrameDecoder decoder, FrameHandler frameHandler)
    : m_port(port)
    , m_decoder(std::move(decoder))
    , m_frameHandler(std::move(frameHandler))
{
}

void SerialPortReader::reset() { m_decoder.reset(); }

void SerialPortReader::ReadPort()
{
    if (m_port->isOpen()) // or it was lost since this was due
        read();
}

void SerialPortReader::read() { m_decoder.feed(m_port->readAll(), m_frameHandler); }
