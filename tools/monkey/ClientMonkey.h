#pragma once

#include "support/ClientView.h"
#include "support/Terminal.h"
#include "tools/monkey/Ledger.h"

#include <QRandomGenerator>

/// A remote client that sets anything to anything, some of it impossible, a few sets at a time.
class ClientMonkey
{
public:
    /// @param view  the settings that there are
    ClientMonkey(const SimulatedChassis &chassis, const ClientView &view, quint32 seed, Ledger &ledger);

    /// Sends one set, unless too many are unanswered.
    void act();

private:
    [[nodiscard]] QByteArray valueFor(const QByteArray &key);
    [[nodiscard]] QByteArray pick(const QByteArrayList &choices)
    {
        return choices[m_random.bounded(int(choices.size()))];
    }

    Ledger &m_ledger;
    QRandomGenerator m_random;
    ClientView::Values m_settings;
    QByteArrayList m_keys;
    Terminal m_terminal;
    int m_unanswered = 0;
};
