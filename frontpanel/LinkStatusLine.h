#pragma once

#include <QHash>
#include <QList>
#include <QStatusBar>
#include <QString>
#include <QTimer>

class QLabel;
class QProgressBar;
class SerialPortController;

/// The line at the foot of the main window: the state of each serial link in words, the age of the last message from
/// the chassis, the counts of time-outs and refusals, and for a while the last change that failed.
class LinkStatusLine : public QStatusBar
{
    Q_OBJECT

public:
    explicit LinkStatusLine(QWidget *parent = nullptr);

    /// Adds a link. The first one is the command link, whose messages are counted.
    /// @param link outlives this line, or ends with the application
    void addLink(const SerialPortController *link);
    /// Shows the present state of the links; runs twice a second by itself.
    void refresh();
    /// Why the panels may show stale values; empty while the chassis is live.
    [[nodiscard]] const QString &trouble() const { return m_trouble; }
    /// Shows beside the remote link whether a client is present.
    void setClientPresent(bool present) { m_isClientPresent = present; }

Q_SIGNALS:
    /// After every refresh().
    void refreshed();

private:
    struct Entry
    {
        const SerialPortController *link;
        QLabel *label;
    };

    void showChassis(const SerialPortController &link);
    void showFailure(const QString &address, const QString &mnemonic, bool refused);
    [[nodiscard]] QString stateOf(const SerialPortController &link) const;

    QList<Entry> m_entries;
    QProgressBar *m_progress;
    QLabel *m_failure;
    QLabel *m_messages;
    QTimer m_refreshTmr;
    QTimer m_failureTmr;
    QString m_trouble;
    bool m_isClientPresent = false;
};
