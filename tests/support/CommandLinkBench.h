#pragma once

#include "channels/RcvrChan.h"
#include "channels/UniversalChan.h"
#include "head/SerialPortController.h"
#include "support/LinkBench.h"
#include "support/Wait.h"

/// A command link, and at its far end a chassis that answers from the first byte on. It has two receivers unless
/// bench.fit() says otherwise before the start.
struct CommandLinkBench
{
    CommandLinkBench()
        : far(bench.command())
        , link(nullptr, SerialPortController::COMMAND_LINK, QStringLiteral("RACK-7"))
    {
        far.setAnswering(true);
    }

    void open() { link.StartEstablishCommTmr(20, nullptr); }
    /// Goes through the whole start-up.
    [[nodiscard]] bool start()
    {
        open();
        return far.waitForFrame("U0:TRON:ON", 20'000) && isQueueDone();
    }
    void queue(Channel *owner, const QString &address, const QString &mnemonic, const QString &data,
               StandardCommand::CommandType type)
    {
        link.AddCmdToTxmtCmdQueue(
            new StandardCommand(owner, address, mnemonic, data, StandardCommand::Queued, type, 1000));
    }
    /// Waits until every message on its way is answered and processed, by a "U0:VERTSKB" query behind all of them.
    [[nodiscard]] bool idle()
    {
        const QByteArray version = QByteArray::number(++m_version);
        far.setValue("U0:VERTSKB", version);
        queue(nullptr, QStringLiteral("U0"), QStringLiteral("VERTSKB"), {}, StandardCommand::Query);
        return waitUntil([this, &version] { return system()->getVERTSKB() == QString::fromLatin1(version); }) &&
               isQueueDone(); // what was asked meanwhile
    }

    [[nodiscard]] UniversalChan *system() const { return qobject_cast<UniversalChan *>(link.channels().value(0)); }
    [[nodiscard]] RcvrChan *receiver(int position) const
    {
        return qobject_cast<RcvrChan *>(link.channels().value(position));
    }

    LinkBench bench;
    FarEnd &far;
    SerialPortController link;

private:
    [[nodiscard]] bool isQueueDone()
    {
        const auto &queue = link.txmtCmdQueue();
        return waitUntil([&queue] { return !queue.inFlight() && queue.waitingCount() == 0; });
    }

    int m_version = 0;
};
