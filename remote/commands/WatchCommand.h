#pragma once

#include "remote/commands/Command.h"
#include "remote/commands/ValuePrinter.h"

namespace remote {

/// Prints the values that the head sends on both links.
class WatchCommand : public Command
{
    Q_OBJECT

public:
    explicit WatchCommand(Session &session);
    void start() override;
    [[nodiscard]] bool isEndless() const override { return true; }

private:
    void show(const QByteArray &link, const QByteArray &frame);

    ValuePrinter m_printer;
    int m_shown = 0;
};

} // namespace remote
