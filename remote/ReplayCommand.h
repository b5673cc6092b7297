#pragma once

#include "Command.h"
#include "Recording.h"
#include "ValuePrinter.h"

#include <QElapsedTimer>

/// Shows what the head had sent in a recording.
class ReplayCommand : public Command
{
    Q_OBJECT

public:
    explicit ReplayCommand(Session &session);
    [[nodiscard]] QString readInput() override;
    void start() override;
    [[nodiscard]] bool isEndless() const override { return true; }

private:
    void showNext();

    ValuePrinter m_printer;
    Recording m_recording;
    QElapsedTimer m_clock;
    qsizetype m_next = 0;
};
