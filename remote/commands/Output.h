#pragma once

#include <QByteArray>
#include <QString>

namespace remote {

/// Standard output and standard error. Colours and progress go to terminals only.
class Output
{
public:
    enum class Colour { Green = 32, Yellow = 33, Red = 31, Cyan = 36 };

    Output();
    /// Turns notes and progress off.
    void setQuiet(bool quiet) { m_quiet = quiet; }

    /// Writes one line to standard output, unbuffered.
    void line(const QByteArray &text);
    /// False once writing to standard output failed; faults other than EPIPE and EINTR are reported.
    [[nodiscard]] bool isOpen() const { return m_fault == 0; }
    /// Why it failed, as an errno: EPIPE for a reader that closed, EINTR for an end signal.
    [[nodiscard]] int fault() const { return m_fault; }
    /// @p text in a colour if standard output shows colours.
    [[nodiscard]] QByteArray painted(const QByteArray &text, Colour colour) const;

    /// Writes an error to standard error.
    void error(const QString &text);
    /// Writes a note to standard error, unless quiet.
    void note(const QString &text);
    /// Updates the progress line on a terminal: "reading 12 of 340".
    void progress(const QString &what, qsizetype done, qsizetype all);

private:
    void clearProgress();

    int m_fault = 0;
    bool m_quiet = false;
    bool m_colours = false;
    bool m_errorColours = false;
    bool m_progressShown = false;
};

} // namespace remote
