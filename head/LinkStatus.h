#pragma once

#include <QTime>
#include <QtGlobal>

/// How one serial link fares, for the operator.
struct LinkStatus
{
    enum class State {
        NotPresent, ///< its device would not open
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
    /// Time since the last report of a far end that has reported or owes reports; 0 for any other.
    qint64 withoutReportMs = 0;
    bool hasOtherCards = false; ///< the chassis came back with other cards than the channels were made for
    quint64 timeOuts = 0;
    quint64 refusals = 0;

    /// Whether reports stay out; a chassis sends several a second.
    [[nodiscard]] bool isSilent() const { return withoutReportMs > 5000; }
};
