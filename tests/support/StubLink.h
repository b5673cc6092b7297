#pragma once

#include "link/ChannelLink.h"
#include "link/RemoteCommand.h"
#include "link/StandardCommand.h"

#include <deque>
#include <memory>

/// A link without port and far end: what is queued stays with the test, which decides how each command ends.
class StubLink final : public ChannelLink
{
public:
    void AddCmdToTxmtCmdQueue(StandardCommand *command) override { queued.emplace_back(command); }
    void queueForClient(RemoteCommand *message) override { delete message; }
    [[nodiscard]] const QList<Channel *> &channels() const override { return m_channels; }
    [[nodiscard]] bool isStale() const override { return false; }
    [[nodiscard]] bool isInDoubt(const StandardCommand &) const override { return false; }
    void noteSet(const StandardCommand &) override {}
    void noteReport() override {}
    [[nodiscard]] std::size_t queuedCount() const override { return 0; }
    [[nodiscard]] std::size_t takenCount() const override { return 0; }
    [[nodiscard]] bool isClientAwaitingAnswers() const override { return false; }
    [[nodiscard]] bool isClientHeldBack() const override { return false; }

    std::deque<std::unique_ptr<StandardCommand>> queued;

private:
    QList<Channel *> m_channels;
};
