#pragma once

#include "channels/Channel.h"
#include "channels/UnknownSettings.h"

#include <QElapsedTimer>

/// Model of the built-in self-test function of the card on the spectral link.
///
/// It keeps every value that the card reports, under the card's own mnemonic, for the remote client.
class BistChan : public Channel
{
    Q_OBJECT

public:
    static constexpr QLatin1StringView ChanType{ "S" };

private:
    static constexpr auto kCatalogue = [] {
        using enum Catalogue::Kind;
        using enum Catalogue::Flag;
        return std::to_array<Catalogue::Row>({
            { QLatin1StringView("CFRQ"), Special, Queried },
            { QLatin1StringView("CATT_1"), Special, Queried },
            { QLatin1StringView("CATT_2"), Special, Queried },
            { QLatin1StringView("SCD1"), Special, Queried },
            { QLatin1StringView("SCD2"), Special, Queried },
            { QLatin1StringView("FMDV"), Special, Queried },
            { QLatin1StringView("UNBL"), Special, Queried },
            { QLatin1StringView("SCG1"), Special, Queried },
            { QLatin1StringView("SCG2"), Special, Queried },
            { QLatin1StringView("PNGN"), Special, Queried },
            { QLatin1StringView("CBND"), Special, Queried },
            { QLatin1StringView("CERR"), Special, Queried },
            { QLatin1StringView("SCR1"), Special, Queried },
            { QLatin1StringView("SCR2"), Special, Queried },
            { QLatin1StringView("PRNR"), Special, Queried },
            { QLatin1StringView("APNR"), Special, Queried },
            { QLatin1StringView("SCF1"), Special, Queried },
            { QLatin1StringView("SCF2"), Special, Queried },
            { QLatin1StringView("BSINT"), Special, Queried },
            { QLatin1StringView("CMOD"), Special, Queried },
            { QLatin1StringView("C1EN"), Special, Queried },
            { QLatin1StringView("C2EN"), Special, Queried },
            { QLatin1StringView("PCEN"), Special, Queried },
            { QLatin1StringView("IFSL"), Special, Queried },
            { QLatin1StringView("CPRN"), Special, Queried },
            { QLatin1StringView("CDLE"), Special, Queried },
            { QLatin1StringView("CREF"), Special, Queried },
            { QLatin1StringView("CPWR"), Special, Queried },
            { QLatin1StringView("CEXT"), Special, Queried },
            { QLatin1StringView("CDSC"), Special, Queried },
            { QLatin1StringView("DDSF"), Special, Queried },
            { Commands::NAME, Special, Queried | Settable, QLatin1StringView("Chan Name") },
            { Commands::SLAVE, Special, Queried, QLatin1StringView("0") },
        });
    }();
    static_assert(Catalogue::isWellFormed(kCatalogue));

    static consteval int at(QLatin1StringView mnemonic) { return Catalogue::at(kCatalogue, mnemonic); }

public:
    /// @param channel "1"
    /// @param link    carries the channel's commands; outlives it
    BistChan(QObject *parent, const QString &channel, ChannelLink *link)
        : Channel(parent, ChanType, channel, link, kCatalogue)
    {
    }

    using Channel::ProcessCmd;
    void ProcessCmd(const StandardCommand &command) override;
    /// True while one of its readings arrives every few seconds.
    [[nodiscard]] bool isReporting() const override { return m_isReporting; }
    /// Last value reported under this mnemonic; null if there was none.
    [[nodiscard]] QString value(const QString &mnemonic) const { return m_values.value(mnemonic); }

protected:
    void processSpecial(int row, const Report &report) override;
    void processUnknown(const Report &report) override;
    [[nodiscard]] std::optional<QString> answerToQuery(const QString &mnemonic) override;
    [[nodiscard]] bool isHeldInLatin1(const QString &mnemonic) const override { return m_values.isLatin1(mnemonic); }
    [[nodiscard]] bool takesSet(const QString &mnemonic, const QString &data) const override;
    void carryOutSet(const RemoteCommand &set) override;

private:
    void noteReading(const QString &mnemonic);

    bool m_isReporting = false;
    QString m_reading; ///< mnemonic of the reading that is watched
    QElapsedTimer m_sinceReading;
    UnknownSettings m_values;
};
