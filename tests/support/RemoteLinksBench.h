#pragma once

#include "support/CommandLinkBench.h"
#include "support/Script.h"

#include <algorithm>
#include <functional>
#include <optional>

/// A head that serves a remote client, and the record of what passes: at its far ends a chassis whose settings were all
/// read, and the client on both of its links.
struct RemoteLinksBench : CommandLinkBench
{
    /// What reached the cards, and the client on its two links. ACK stands as "+", NAK as "-". Of what a line of play()
    /// sends to the client, the answers stand first: a card's verdict may come between them.
    struct Record
    {
        QStringList card, client, status;
    };

    /// @param cards "LinkBench::kSpectral" opens the spectral link with all its channels
    explicit RemoteLinksBench(QByteArrayList cards)
    {
        const bool hasSpectralLink = cards.removeAll(LinkBench::kSpectral) > 0;
        bench.fit(cards);
        if (!start())
            qFatal("the chassis does not start");
        remote.GenerateChannelList(&link);
        status.GenerateChannelList(&link);
        if (hasSpectralLink)
            openSpectralLink();
        far.clear();
        fillScript();
    }

    [[nodiscard]] FarEnd &cardOf(const QString &address) { return address.startsWith(u'S') ? bench.spectral() : far; }
    /// Plays a script, each line when everything before is processed. The verbs are "client" and "card" (they send the
    /// frames that follow, "|" between them), "refuse" (the card does, from now on) and "ask" (whether the client is
    /// present; it answers so, or not at all).
    Record play(const QString &lines)
    {
        Record record;
        m_script.play(lines, [&] {
            if (!settle())
                record.card += QStringLiteral("no end");
            QStringList pushed = taken(client);
            std::stable_partition(pushed.begin(), pushed.end(),
                                  [](const QString &text) { return text.endsWith(u'+') || text.endsWith(u'-'); });
            record.card += taken(far) + taken(bench.spectral());
            record.client += pushed;
            record.status += taken(statusClient);
        });
        return record;
    }
    /// Waits until all that the client and the cards have sent is processed and pushed.
    [[nodiscard]] bool settle()
    {
        const QString mark = QStringLiteral("MARK%1").arg(++m_mark);
        const bool isDone = isClientServed() && idle() && isSpectralLinkIdle() && isClientServed();
        status.AddCmdToTxmtRemoteEyeAndStatusCmdQueue(
            new RemoteCommand(nullptr, QStringLiteral("X"), mark, QString(), true));
        return isDone && statusClient.waitForFrame("X:" + mark.toLatin1() + ':', 20'000);
    }
    /// Queues a message of the head for the client.
    void push(Channel *sender, const auto &...arguments)
    {
        remote.AddCmdToTxmtRemoteCmdQueue(new RemoteCommand(sender, arguments...));
    }
    /// What a far end has received, without what the bench and the regular question for the client add.
    static QStringList taken(FarEnd &from)
    {
        QStringList texts;
        for (const QByteArray &frame : from.frames())
            texts += QString::fromLatin1(frame).replace(u'\x06', u'+').replace(u'\x15', u'-');
        from.clear();
        texts.removeAll(QStringLiteral("U0:VERTSKB"));
        texts.removeAll(QStringLiteral("U0:REMOTE?"));
        texts.removeIf([](const QString &text) { return text.startsWith(QLatin1StringView("X:MARK")); });
        return texts;
    }

    FarEnd &client = bench.remote();
    FarEnd &statusClient = bench.remoteEyeAndStatus();
    SerialPortController remote{ nullptr, SerialPortController::REMOTE_LINK, {} };
    SerialPortController status{ nullptr, SerialPortController::REMOTE_EYE_AND_STATUS_LINK, {} };
    std::optional<SerialPortController> spectral;

private:
    /// Lets @p act be done with each frame of the line.
    void onFrames(const QString &verb, const std::function<void(const QString &frame)> &act)
    {
        m_script.on(verb, [act](const QString &text) {
            for (const QString &frame : text.split(u'|'))
                act(frame);
        });
    }
    void fillScript()
    {
        onFrames(QStringLiteral("client"), [this](const QString &frame) { client.sendFrame(frame.toLatin1()); });
        onFrames(QStringLiteral("card"), [this](const QString &frame) { cardOf(frame).sendFrame(frame.toLatin1()); });
        onFrames(QStringLiteral("refuse"),
                 [this](const QString &frame) { cardOf(frame).refuse(frame.section(u':', 0, 1).toLatin1()); });
        onFrames(QStringLiteral("ask"), [this](const QString &answer) {
            ask();
            if (answer.isEmpty())
                remote.StartTimeOutTmr(1);
            else
                client.sendFrame(answer.toLatin1());
        });
    }
    void ask()
    {
        system()->RemoteStatusTimeOut();
        const auto &queue = remote.txmtRemoteCmdQueue();
        if (!waitUntil([&] { return queue.inFlight() && queue.inFlight()->type() == RemoteCommand::Query; }))
            qWarning("not asked");
    }
    void openSpectralLink()
    {
        bench.spectral().setAnswering(true);
        spectral.emplace(nullptr, SerialPortController::SPECTRAL_LINK, QStringLiteral("RACK-7"));
        spectral->StartEstablishCommTmr(20, nullptr);
        if (!bench.spectral().waitForFrame("U0:TRON:ON", 20'000) || !isSpectralLinkIdle())
            qFatal("the spectral card does not start");
        for (Channel *channel : spectral->channels()) {
            if (channel->address().startsWith(u'S')) {
                remote.addSpecChan(channel);
                status.addSpecChan(channel);
            }
        }
        bench.spectral().clear();
    }
    /// A query that no channel is for is answered behind everything before it.
    bool isClientServed()
    {
        const QByteArray query = "X:MARK" + QByteArray::number(++m_mark);
        client.sendFrame(query + '?');
        return client.waitForFrame(query + ":\x15", 30'000);
    }
    bool isSpectralLinkIdle()
    {
        if (!spectral)
            return true;
        spectral->AddCmdToTxmtCmdQueue(new StandardCommand(nullptr, QStringLiteral("U0"), QStringLiteral("VERTSKB"), {},
                                                           StandardCommand::Queued, StandardCommand::Query, 1000));
        const auto &queue = spectral->txmtCmdQueue();
        return waitUntil([&queue] { return !queue.inFlight() && queue.waitingCount() == 0; });
    }

    Script m_script;
    int m_mark = 0;
};
