#include "remote/commands/Output.h"

#include "remote/files/Interruptible.h"
#include "remote/wire/Escaping.h"

#include <cerrno>
#include <cstring>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace remote {

namespace {

const QByteArray kEraseLine = "\r\x1b[K";

QByteArray inColour(const QByteArray &text, Output::Colour colour)
{
    return "\x1b[" + QByteArray::number(int(colour)) + 'm' + text + "\x1b[0m";
}

} // namespace

Output::Output()
{
    const bool wanted = qEnvironmentVariableIsEmpty("NO_COLOR");
    m_colours = wanted && ::isatty(STDOUT_FILENO) == 1;
    m_errorColours = wanted && ::isatty(STDERR_FILENO) == 1;
}

void Output::line(const QByteArray &text)
{
    clearProgress();
    if (!isOpen())
        return;
    m_fault = Interruptible::write(STDOUT_FILENO, text + '\n');
    if (m_fault != 0 && m_fault != EPIPE && m_fault != EINTR)
        error(u"standard output: %1"_s.arg(QString::fromLocal8Bit(std::strerror(m_fault))));
}

QByteArray Output::painted(const QByteArray &text, Colour colour) const
{
    return m_colours ? inColour(text, colour) : text;
}

void Output::error(const QString &text)
{
    clearProgress();
    const QByteArray bytes = "zirvo-remote: " + Escaping::printable(text.toLocal8Bit());
    Interruptible::writeMessage(STDERR_FILENO, (m_errorColours ? inColour(bytes, Colour::Red) : bytes) + '\n');
}

void Output::note(const QString &text)
{
    if (m_quiet)
        return;
    clearProgress();
    Interruptible::writeMessage(STDERR_FILENO, "zirvo-remote: " + text.toLocal8Bit() + '\n');
}

void Output::progress(const QString &what, qsizetype done, qsizetype all)
{
    if (m_quiet || ::isatty(STDERR_FILENO) != 1)
        return;
    Interruptible::writeMessage(STDERR_FILENO,
                                kEraseLine + u"%1 %2 of %3"_s.arg(what).arg(done).arg(all).toLocal8Bit());
    m_progressShown = true;
}

void Output::clearProgress()
{
    if (m_progressShown)
        Interruptible::writeMessage(STDERR_FILENO, kEraseLine);
    m_progressShown = false;
}

} // namespace remote
