#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QFile>
#include <QHash>
#include <QString>

class QProcess;

/// Watches a running front panel by its log category zirvo.health and by its process data, and checks that nothing
/// grows, nothing piles up and nothing stops.
class HealthWatch
{
public:
    using Counts = QHash<QByteArray, qint64>;

    /// @param head writes its standard error to @p logPath; outlives this
    HealthWatch(const QProcess &head, const QString &logPath);

    /// Reads the log; to be called several times a second.
    void follow();
    /// How many lines the program has logged.
    [[nodiscard]] int lines() const { return m_lines; }

    /// The counts of the moment, those of the log by their names there.
    [[nodiscard]] Counts counts() const;
    [[nodiscard]] QByteArray lastLine() const { return m_lastLine; }

    /// What is wrong at any moment; empty if nothing is.
    [[nodiscard]] QString faultNow() const;
    /// What was wrong in the time since the last call, about a minute: flows that had ended.
    [[nodiscard]] QString faultOfMinute();
    /// What has piled up while nobody does anything.
    [[nodiscard]] static QString faultAtRest(const Counts &counts);
    /// What has grown from one time of rest to a later one.
    [[nodiscard]] static QString growth(const Counts &from, const Counts &to);

private:
    void take(const QByteArray &line);

    const QProcess &m_head;
    QFile m_log;
    QByteArray m_unread;
    QElapsedTimer m_lastTold;
    QByteArray m_lastLine;
    Counts m_told;
    int m_lines = 0;
    int m_linesOfMinute = 0;
    QHash<QByteArray, int> m_liveLines; ///< of the minute, by the name of the flow
};
