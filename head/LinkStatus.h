#pragma once

#include <QTime>
#include <QtGlobal>

/// State of one serial link, for the operator.
struct LinkStatus
{
    enum class State {
        NotPresent, ///< its device does not open
        Opening,    ///< the chassis is given time to boot
        Waiting,    ///< the chassis has not answered yet
        Reading,    ///< settings are read
        Live,
        Lost, ///< the cable is pulled
    };

    State state = State::NotPresent;
    int settingsRead = 0;  ///< of settingsAsked; while Reading
    int settingsAsked = 0; ///< while Reading
    QTime lostSince;       ///< time of day; while Lost
    qint64 silentMs = -1;  ///< time since the last message; less than 0 if there was none
    /// How long expected reports have been missing, in ms; 0 if none are expected.
    qint64 withoutReportMs = 0;
    bool hasOtherCards = false; ///< the cards have changed since the channels were made
    quint64 timeOuts = 0;
    quint64 refusals = 0;

    /// Whether reports are missing; a chassis sends several a second.
    [[nodiscard]] bool isSilent() const { return withoutReportMs > 5000; }
};
