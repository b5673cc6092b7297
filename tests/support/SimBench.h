#pragma once

#include "simulator/chassis/CardCage.h"
#include "simulator/chassis/Family.h"
#include "simulator/chassis/FaultRules.h"
#include "simulator/chassis/Request.h"
#include "simulator/chassis/SpectralCard.h"
#include "simulator/chassis/Steps.h"
#include "simulator/links/Link.h"
#include "simulator/links/Trace.h"
#include "simulator/radio/RadioScene.h"
#include "simulator/units/PresetKeeper.h"
#include "simulator/units/PresetStore.h"
#include "support/Talk.h"

/// The units of a simulated chassis without its links, in time that passes when the test says so.
class SimBench
{
public:
    explicit SimBench(const QString &family = QStringLiteral("demod-k3050"), quint32 seed = 1)
        : m_cards(m_presets, sim::Seeds(seed))
    {
        QString error;
        const auto read = sim::Family::load(family, error);
        if (!read || !m_cards.build(*read, error) ||
            !m_spectral.build(read->spectral.value_or(QJsonObject()), 1, error))
            qFatal("%s", qPrintable(error));
        m_scene = std::make_unique<sim::RadioScene>(read->scene, seed);
        const auto note = [this](const QByteArray &text) { m_reports.append(text); };
        QObject::connect(&m_cards.units(), &sim::UnitSet::reported, note);
        QObject::connect(&m_announcer, &sim::ChangeAnnouncer::announced, note);
        powerCycle();
        pass(1);
    }

    void powerCycle()
    {
        m_cards.units().loseVolatileState();
        m_spectral.powerOff();
    }
    /// Passes simulated time.
    void pass(double seconds = sim::kStepSeconds)
    {
        for (int left = sim::stepsIn(seconds); left > 0; --left) {
            m_scene->step(sim::kStepSeconds);
            m_cards.step(*m_scene);
            m_cards.units().reportSideEffects();
            m_announcer.step(sim::kStepMs);
            m_cards.report(++m_steps, kReportHz);
        }
    }
    /// The answer to a request, with ACK and NAK spelt out; "S:" before it puts it to the spectral link. "$" begins
    /// what the chassis does itself: "$signal FREQ LEVEL", "$set ADDR MNEM VALUE", "$power-cycle".
    QByteArray ask(const QByteArray &text)
    {
        if (text.startsWith('$'))
            return act(text.sliced(1).split(' ')) ? "ok" : "error";
        const bool isSpectral = text.startsWith("S:");
        const auto request = sim::Request::read(text.sliced(isSpectral ? 2 : 0));
        const QByteArray answer =
            request ? (isSpectral ? m_spectral.units() : m_cards.units()).answer(*request) : QByteArray();
        return (isSpectral && answer.size() > 1 ? "S:" : "") +
               QByteArray(answer).replace('\x06', "ACK").replace('\x15', "NAK");
    }
    QByteArray talk(const QByteArray &steps)
    {
        return ::talk(
            steps, [this](const QByteArray &text) { return ask(text); }, [this] { pass(); });
    }
    /// Unsolicited messages since the last call.
    QByteArrayList takeReports() { return std::exchange(m_reports, {}); }

    static constexpr double kReportHz = 25;

private:
    bool act(const QByteArrayList &words)
    {
        if (words.first() == "signal")
            m_scene->setSignal(words.at(1).toDouble(), words.at(2).toDouble());
        else if (words.first() == "power-cycle")
            powerCycle();
        sim::Unit *const unit = m_cards.units().find(words.value(1));
        return words.first() != "set" || (unit && unit->change(words.at(2), words.mid(3).join(' ')));
    }

    sim::PresetStore m_store;
    sim::ChangeAnnouncer m_announcer;
    sim::PresetKeeper m_presets{ m_store, m_announcer };
    sim::CardCage m_cards;
    sim::Link m_link{ QStringLiteral("spectral"), {} };
    sim::FaultRules m_faults{ 1 };
    sim::Trace m_trace;
    sim::SpectralCard m_spectral{ m_link, m_faults, m_trace };
    std::unique_ptr<sim::RadioScene> m_scene;
    qint64 m_steps = 0;
    QByteArrayList m_reports;
};
