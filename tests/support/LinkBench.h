#pragma once

#include "support/FarEnd.h"

#include <QTemporaryDir>

/// A head's serial devices on the bench: a far end for every link, and the environment that leads the program there.
///
/// The command link's far end answers as a chassis with two receivers once setAnswering(true) is called on it.
class LinkBench
{
public:
    /// @param startupSeconds countdown of the command link; less than 0 leaves the head's own
    explicit LinkBench(int startupSeconds = 0);

    FarEnd &command() { return m_command; }
    FarEnd &eye() { return m_eye; }
    FarEnd &spectral() { return m_spectral; }
    FarEnd &remote() { return m_remote; }
    FarEnd &remoteEyeAndStatus() { return m_remoteEyeAndStatus; }

    [[nodiscard]] QString path(const QString &device) const { return m_folder.filePath(device); }

    /// Start-up queries of the system channel, and of a receiver with the address @p address, in wire order.
    [[nodiscard]] static QByteArrayList systemQueries();
    [[nodiscard]] static QByteArrayList receiverQueries(const QByteArray &address);

private:
    void fillChassis();

    QTemporaryDir m_folder;
    FarEnd m_command;
    FarEnd m_eye;
    FarEnd m_spectral;
    FarEnd m_remote;
    FarEnd m_remoteEyeAndStatus;
};
