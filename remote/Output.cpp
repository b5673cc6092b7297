#include "Output.h"

#include "EndSignals.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

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
    m_fault = EndSignals::write(STDOUT_FILENO, text + '\n');
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
    const QByteArray bytes = "zirvo-remote: " + text.toLocal8Bit();
    std::fprintf(stderr, "%s\n", (m_errorColours ? inColour(bytes, Colour::Red) : bytes).constData());
}

void Output::note(const QString &text)
{
    if (m_quiet)
        return;
    clearProgress();
    std::fprintf(stderr, "zirvo-remote: %s\n", text.toLocal8Bit().constData());
}

void Output::progress(const QString &what, qsizetype done, qsizetype all)
{
    if (m_quiet || ::isatty(STDERR_FILENO) != 1)
        return;
    std::fprintf(stderr, "\r\x1b[K%s", u"%1 %2 of %3"_s.arg(what).arg(done).arg(all).toLocal8Bit().constData());
    std::fflush(stderr);
    m_progressShown = true;
}

void Output::clearProgress()
{
    if (m_progressShown)
        std::fputs("\r\x1b[K", stderr);
    m_progressShown = false;
}
