#pragma once

#include "remote/commands/Command.h"

namespace remote {

/// Records the traffic of both links.
class RecordCommand : public Command
{
    Q_OBJECT

public:
    using Command::Command;
    void start() override;
    [[nodiscard]] QString progress() const override;
    [[nodiscard]] bool isEndless() const override { return true; }

private:
    int m_frames = 0;
};

} // namespace remote
