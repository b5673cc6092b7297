#pragma once

#include "Command.h"
#include "Pace.h"
#include "Recording.h"
#include "ValuePrinter.h"

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
    Pace m_pace;
};
