#pragma once

#include "Command.h"
#include "ValuePrinter.h"

/// Shows what the head tells on both links.
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
