#pragma once

#include "channels/DmdRegisters.h"
#include "channels/DmdSettings.h"
#include "channels/UnknownSettings.h"

#include <QByteArray>
#include <QStringList>

class EyeConstData;

/// Model of one demodulator channel. Nine settings are registers of the card; the source of the data is chosen on the
/// system address.
class DmdChan : public DmdSettings
{
    Q_OBJECT

public:
    struct RemoteCommands : Commands
    {
        static constexpr QLatin1StringView EYEP{ "EYEP" };
    };

    /// @param channel "1", "2" or "3"
    /// @param link    carries the channel's commands; outlives it
    /// @param directDqmCommands whether the card takes "DQMON", "DQMFS" and "DEQE" instead of registers
    DmdChan(QObject *parent, const QString &channel, ChannelLink *link, bool directDqmCommands);

    /// Raw text of a card register: four hexadecimal digits, "Unknown" until read.
    /// @param number two hexadecimal digits; for a register without a setting the last such reply, whole
    [[nodiscard]] QString getDREG(const QString &number) const;
    /// Writes one of the nine registers that hold settings, unless it already holds that text.
    void setDREG(const QString &number, const QString &value);
    /// Writes any register.
    /// @param text number and value as the card takes them
    void setDREG(const QString &text);

    /// Names of the modes that the card offers, in its order.
    [[nodiscard]] const QStringList &demodModes() const { return m_demodModes; }
    /// "Auto" and the IF FIR filter bandwidths; DFIR is a position in this list, less one.
    [[nodiscard]] const QStringList &ifFilters() const { return m_ifFilters; }
    /// Video filter bandwidths; VFIR is a position in this list.
    [[nodiscard]] const QStringList &videoFilters() const { return m_videoFilters; }
    /// Video filter bandwidths as the card names them; VFBW is a position in this list.
    [[nodiscard]] const QStringList &videoFilterBandwidths() const { return m_videoFilterBandwidths; }
    /// Last value of a mnemonic that the card reported and the catalogue does not hold; null if there was none.
    [[nodiscard]] QString unknownValue(const QString &mnemonic) const { return m_unknownSettings.value(mnemonic); }

    using Channel::ProcessCmd;
    void ProcessCmd(const StandardCommand &command) override;

    /// Keeps a block of the eye link and hands it on to the remote client.
    void ProcessEyeConstData(const EyeConstData &data);
    /// Bytes of the last block: samples of the eye pattern or constellation, or serial data.
    [[nodiscard]] const QByteArray &lastEyeBlock() const { return m_lastEyeBlock; }

protected:
    void requestSettings(StandardCommand::Priority priority) override;
    [[nodiscard]] Request queryOf(int row) const override;
    [[nodiscard]] Request setOf(int row, const QString &value) const override;
    [[nodiscard]] bool isWrittenWhole(int row) const override;
    [[nodiscard]] bool isSameValue(int row, const QString &value, const QString &held) const override;
    [[nodiscard]] QString normalized(int row, const QString &value) const override;
    void processSpecial(int row, const Report &report) override;
    void processUnknown(const Report &report) override;
    void settingStored(int row) override;
    [[nodiscard]] bool isSlaving() const override;
    /// A mnemonic that the catalogue does not hold is queried at the card the first time; one whose value the head does
    /// not keep under its own name, every time. While 16 such queries are open, more are refused.
    [[nodiscard]] std::optional<QString> answerToQuery(const QString &mnemonic) override;
    [[nodiscard]] bool isHeldInLatin1(const QString &mnemonic) const override;
    /// As in every channel; a set of a row without setter is acknowledged and has no effect.
    [[nodiscard]] bool takesSet(const QString &mnemonic, const QString &data) const override;
    void carryOutSet(const RemoteCommand &set) override;

private:
    static constexpr qsizetype kMaxOpenQuestions = 16;

    void processRegister(const Report &report);
    [[nodiscard]] bool takeRegister(const DmdRegisters::Register &reg, const QString &text);
    void processDirect(const Report &report);
    void processDataSource(const Report &report);

    /// Sends a set of the remote client to the card.
    void sendCmdToLocal(const RemoteCommand &set);
    /// Asks the card for what the head keeps no value of; what it answers is reported to the remote client.
    void askCard(const QString &mnemonic);
    /// Hands a value that the catalogue does not hold on to the remote client.
    void sendCmdToRemote(const Report &report);
    void SetUpDemodModesList(const QString &modes);

    DmdRegisters m_registers;
    QStringList m_demodModes;
    QStringList m_ifFilters;
    QStringList m_videoFilters;
    QStringList m_videoFilterBandwidths;
    UnknownSettings m_unknownSettings;
    QStringList m_openQuestions; ///< of the remote client to the card, by mnemonic
    QByteArray m_lastEyeBlock;
};
