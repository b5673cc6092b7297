#pragma once

#include <QByteArray>
#include <QString>

namespace remote {

/// What a person or a script sees of the program. Colours and progress only where a terminal shows them.
class Output
{
public:
    enum class Colour { Green = 32, Yellow = 33, Red = 31, Cyan = 36 };

    Output();
    /// No notes and no progress from now on.
    void setQuiet(bool quiet) { m_quiet = quiet; }

    /// One line on standard output, written at once.
    void line(const QByteArray &text);
    /// False once standard output takes no more; a fault other than a reader that has gone was told.
    [[nodiscard]] bool isOpen() const { return m_fault == 0; }
    /// Why standard output takes no more, as an errno: EPIPE for a reader that has gone, EINTR for an end signal.
    [[nodiscard]] int fault() const { return m_fault; }
    /// @p text in a colour if standard output shows colours.
    [[nodiscard]] QByteArray painted(const QByteArray &text, Colour colour) const;

    /// What went wrong, on standard error.
    void error(const QString &text);
    /// What is good to know, on standard error; not when quiet.
    void note(const QString &text);
    /// Rewrites the progress line on a terminal: "reading 12 of 340".
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
