#pragma once

#include "remote/commands/Command.h"
#include "remote/commands/Pace.h"
#include "remote/commands/ValuePrinter.h"
#include "remote/files/Recording.h"

namespace remote {

/// Prints the values that the head sent in a recording.
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

} // namespace remote
