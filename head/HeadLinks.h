#pragma once

#include "head/SerialPortController.h"

#include <QList>
#include <QObject>
#include <QString>

/// The serial links of the head: opens them in their order and owns them.
///
/// The command link owns the channels that all others serve, so it goes last.
class HeadLinks : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    ~HeadLinks() override;

    /// Opens the link to the chassis.
    /// @param systemIdentifier identity of the chassis
    SerialPortController *openCommandLink(const QString &systemIdentifier);
    /// Opens the other links, once all channels of the command link are known: for the eye blocks, for the remote
    /// client, and for the spectral card, whose discovery begins.
    void openFurtherLinks();
    /// Every setting of the spectral link's channels is known: the links to the remote client serve them as well.
    void shareSpectralChannels();

    /// The links in the order of their opening, the command link first.
    [[nodiscard]] const QList<SerialPortController *> &all() const { return m_links; }
    [[nodiscard]] SerialPortController *commandLink() const { return m_links.value(0); }

Q_SIGNALS:
    /// A link was made; its device may not be open yet.
    void added(SerialPortController *link);
    /// The device of a link could not be opened; it is tried every second.
    void deviceMissing(SerialPortController *link);
    /// Every setting of the spectral link's channels is known.
    void spectralSettingsObtained();

private:
    SerialPortController *open(SerialPortController::PORT_TYPE type, const QString &systemIdentifier = {});
    [[nodiscard]] SerialPortController *link(SerialPortController::PORT_TYPE type) const;

    QList<SerialPortController *> m_links;
};
