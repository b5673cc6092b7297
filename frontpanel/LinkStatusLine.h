#pragma once

#include <QHash>
#include <QList>
#include <QStatusBar>
#include <QString>
#include <QTimer>

class QLabel;
class QProgressBar;
class SerialPortController;

/// The line at the foot of the main window: how each serial link fares, in words, how old the last message of the
/// chassis is, what went unanswered or was refused, and for a while the change that came to nothing last.
class LinkStatusLine : public QStatusBar
{
    Q_OBJECT

public:
    explicit LinkStatusLine(QWidget *parent = nullptr);

    /// Shows one more link. The first one is the chassis' own, whose messages are counted.
    /// @param link outlives this line, or goes with the application
    void addLink(const SerialPortController *link);
    /// Shows the links as they are now; twice a second by itself.
    void refresh();
    /// Why what the panels show may be old; empty while the chassis is there and has told its settings.
    [[nodiscard]] const QString &trouble() const { return m_trouble; }
    /// Tells beside the remote link whether a client is there.
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
