#pragma once

#include "support/FarEnd.h"

#include <QTemporaryDir>

/// A head's serial devices on the bench: a far end for every link, and the environment that leads the program there.
///
/// The command link's far end answers as a chassis once setAnswering(true) is called on it. It has two receivers unless
/// fit() says otherwise, and start values for every channel that it can have.
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

    // Cards for fit()
    static constexpr auto kReceivers = "0103 MPU 2.3 TUNER A1 X,0121 FPGA1 1.9 TUNER A1 X,"
                                       "0104 MPU 2.3 TUNER A2 X,0122 FPGA1 1.9 TUNER A2 X";
    static constexpr auto kCombiner = "0105 MPU 1.4 COMBINER A3 X";
    static constexpr auto kTape = "0110 MPU 1.0 TAPE A4 X";
    /// D1 to D3 that take commands of their own for three of their registers.
    static constexpr auto kOlderDemodulators =
        "DEMOD1 MPU 1.2 K3050 S1,DEMOD2 MPU 1.2 K3050 S2,DEMOD3 MPU 1.2 K3050 S3";
    /// D1 and D2 that hold them in registers. The third one's address stands for a combiner as well.
    static constexpr auto kRegisterDemodulators = "0101 K412W 1.2 QLN412 S1 X,0102 K412W 1.2 QLN412 S2 X";
    static constexpr auto kThirdRegisterDemodulator = "0109 K412W 1.2 QLN412 S3 X";
    static constexpr auto kTmoip = "TM1 2.1"; ///< stands in a list of its own
    static constexpr auto kSpectral = "0170 MPU 1.2 SPECTRUM S6 X";
    static constexpr auto kSelfTest = "0136 MPU 1.2 SPECTRUM S6 X";

    /// Puts these cards into the chassis instead of those it has.
    void fit(const QByteArrayList &cards);

    // Start-up queries of the channels, in wire order
    [[nodiscard]] static QByteArrayList systemQueries();
    [[nodiscard]] static QByteArrayList receiverQueries(const QByteArray &address);
    [[nodiscard]] static QByteArrayList combinerQueries();
    [[nodiscard]] static QByteArrayList demodulatorQueries(const QByteArray &address, bool older);
    [[nodiscard]] static QByteArrayList tapeQueries();
    [[nodiscard]] static QByteArrayList tmoipQueries(); ///< of the card "TM1" and its streams
    [[nodiscard]] static QByteArrayList spectralQueries(const QByteArray &address);
    [[nodiscard]] static QByteArrayList selfTestQueries();

private:
    void fillChassis();

    QTemporaryDir m_folder;
    FarEnd m_command;
    FarEnd m_eye;
    FarEnd m_spectral;
    FarEnd m_remote;
    FarEnd m_remoteEyeAndStatus;
};
