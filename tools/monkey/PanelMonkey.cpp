#include "tools/monkey/PanelMonkey.h"

#include "dialogs/demodulator/DmdCtrlWindow.h"
#include "support/LiveHead.h"

#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSlider>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t kMostWaiting = 6;

/// A control, the setting on the wire that it is for ("#" being the number of its channel), and how its value is
/// read: by default its position, its number, or whether it is on. For a line, the texts to type, each with the value
/// that goes out for it.
struct Row
{
    const char *widget;
    const char *setting;
    const char *form = "";
};

constexpr Row kReceiver[] = {
    { "doubleSpinBoxFREQch", "R#:FREQ" }, { "cboIFBWch", "R#:IFBW" },
    { "cboSLPAch", "R#:SLPA" },           { "cboSLPBch", "R#:SLPB" },
    { "cboPOLAch", "R#:POLA" },           { "cboPOLBch", "R#:POLB" },
    { "cboAGCTch", "R#:AGCT" },           { "cboAFCch", "R#:AFC" },
    { "sldrAFCMch", "R#:AFCM" },          { "cboCAMPch", "R#:CAMP" },
    { "cboPLYBch", "R#:PLYB" },           { "btnAGCFch", "R#:AGCF" },
    { "btnAGCZch", "R#:AGCZ" },           { "lineAntennaCFch", "R#:ANCF", "-20=-20|15=15" },
    { "checkBoxAntennaCFch", "R#:ACFE" },
};
constexpr Row kCombiner[] = {
    { "cboVideoModecmb", "C#:CVMD" }, { "cboOutputModecmb", "C#:CMOD" }, { "btnAGCZcmb", "C#:CHZC" },
    { "btnCMBZ1cmb", "C#:CHZ1" },     { "btnCMBZ2cmb", "C#:CHZ2" },      { "cboSLPAcmb", "C#:SLPA" },
    { "cboSLPBcmb", "C#:SLPB" },      { "cboPOLAcmb", "C#:POLA" },       { "cboPOLBcmb", "C#:POLB" },
};
constexpr auto kRates = "1M=1000000|512k=512000|14M=14000000|2.5M=2500000";
constexpr Row kDemodulator[] = {
    { "cboDemodModedmd", "D#:DMOD", "mode" },
    { "cboInputSourcedmd", "U0:SDM#", "source" },
    { "cboOutputModedmd", "D#:VCFG" },
    { "cboVFBWdmd", "D#:VFIR" },
    { "cboDerandomizerdmd", "D#:BSDR" },
    { "cboDQMdmd", "D#:DQMON" },
    { "cboADEQdmd", "D#:DEQE" },
    { "checkBoxAutoBWdmd", "D#:ALBW" },
    { "checkBoxAutoSweepRangedmd", "D#:ASRG" },
    { "checkBoxAutoStepSizedmd", "D#:ASRT" },
    { "checkBoxAutoModIndexdmd", "D#:TMID", "index" },
    { "sldrAnalogGainAdmd", "D#:VGN1" },
    { "sldrAnalogGainBdmd", "D#:VGN2" },
    { "lineDataRateAdmd", "D#:RATEA", kRates },
    { "lineDataRateBdmd", "D#:RATEB", kRates },
};
constexpr Row kAdvanced[] = {
    { "cboDataPoldmd", "D#:BSDP" },
    { "cboClkPhasedmd", "D#:BSCL" },
    { "cboAnalogPoldmd", "D#:VIDP" },
    { "cboInterleavingdmd", "D#:BSIL" },
    { "cboLoopBWDivdmd", "D#:TRKD" },
    { "cboFMSweepdmd", "D#:DAFC" },
    { "cboCouplingdmd", "D#:VCP1 D#:VCP2" },
    { "cboDeEmphasisdmd", "D#:VDE1 D#:VDE2" },
    { "cboFIRFilterBWdmd", "D#:DFIR", "less one" },
    { "cboFastAquiredmd", "D#:DFAQ" },
    { "cboVideo0dmd", "D#:CPT0", "video" },
    { "cboVideo1dmd", "D#:CPT1", "video" },
    { "cboVideo2dmd", "D#:CPT2", "video" },
    { "cboVideo3dmd", "D#:CPT3", "video" },
    { "cboVideo4dmd", "D#:CPT4", "video" },
    { "cboVideo5dmd", "D#:CPT5", "video" },
    { "cboVideo6dmd", "D#:CPT6", "video" },
    { "cboVideo7dmd", "D#:CPT7", "video" },
    { "cboInputCodedmd", "D#:BSIC" },
    { "cboLowPassFilterdmd", "D#:VLPF" },
    { "cboAnalogFilter", "D#:VAFL" },
    { "lineBitSyncLoopBWdmd", "D#:LBWB", "0.5=0.00500|2=0.02000" },
    { "lineCarrierLoopBWdmd", "D#:LBWC", "1=0.01000|3=0.03000" },
    { "lineSweepRangedmd", "D#:SWRG", "100=100|50=50" },
    { "lineStepSizedmd", "D#:SWRT", "50000=50000|25k=25000" },
    { "lineModIndexdmd", "D#:TMID", "0.35=0.35|0.31=0.31" },
    { "lineDQMFrameSizedmd", "D#:DQMFS", "512=0200|1024=0400" },
    { "lineDQMFrameWorddmd", "D#:CDRG", "256=850100|65131=85fe6b" },
    { "lineDQMManualMeandmd", "D#:CDRG", "0.5=867fff|0.25=863fff" },
    { "lineDQMBEPOffsetdmd", "D#:CDRG", "5=870005|-1=87ffff" },
};

struct MenuEntry
{
    const char *action;
    const char *set;
};
constexpr MenuEntry kMenu[] = {
    { "actionNoSlaving", "U0:SLAVE:0" },
    { "actionDiversitySlaving", "U0:SLAVE:1" },
    { "actionFrequencyDiversitySlaving", "U0:SLAVE:2" },
    { "actionExternalRef", "U0:TMRF:0" },
    { "actionInternalRef", "U0:TMRF:1" },
};

QByteArray modeNamed(const QString &name)
{
    static const QMap<QString, QByteArray> codes{
        { u"PCM-FM"_s, "0" },     { u"TRELLIS FM"_s, "1" },  { u"PM"_s, "2" },     { u"BPSK"_s, "3" },
        { u"QPSK"_s, "4" },       { u"UQPSK"_s, "5" },       { u"AQPSK"_s, "6" },  { u"AUQPSK"_s, "7" },
        { u"SOQPSK"_s, "8" },     { u"MULTI-H CPM"_s, "9" }, { u"OQPSK"_s, "10" }, { u"FM"_s, "13" },
        { u"NTSC-Video"_s, "17" }
    };
    return codes.value(name);
}

} // namespace

PanelMonkey::PanelMonkey(LiveHead &head, quint32 seed, Ledger &ledger) : m_head(head), m_ledger(ledger), m_random(seed)
{
    addControls();
    QObject::connect(&m_boxCloser, &QTimer::timeout, &m_boxCloser, [] {
        for (QWidget *const widget : QApplication::topLevelWidgets()) {
            if (auto *const box = qobject_cast<QMessageBox *>(widget); box && box->isVisible())
                box->accept();
        }
    });
    m_boxCloser.start(10);
}

void PanelMonkey::addControls()
{
    const auto addRows = [this](const QWidget *window, std::span<const Row> rows, const QByteArray &number,
                                bool isNumbered) {
        for (const Row &row : rows) {
            const QString suffix = isNumbered ? QString::fromLatin1(number) : QString();
            add(window, QLatin1StringView(row.widget) + suffix, QByteArray(row.setting).replace('#', number).split(' '),
                row.form);
        }
    };
    for (const QByteArray number : { "1", "2" })
        addRows(&m_head.window(), kReceiver, number, true);
    addRows(&m_head.window(), kCombiner, "1", true);
    const auto windows = m_head.advancedWindows();
    for (const QByteArray number : { "1", "2", "3" }) {
        addRows(&m_head.window(), kDemodulator, number, true);
        addRows(windows[u'D' + QString::fromLatin1(number)], kAdvanced, number, false);
    }
}

void PanelMonkey::add(const QWidget *window, const QString &widget, const QByteArrayList &settings,
                      const QByteArray &form)
{
    auto *const found = window ? window->findChild<QWidget *>(widget) : nullptr;
    if (!found)
        qFatal("no such control: %s", qPrintable(widget));
    m_controls.append({ found, settings, form });
}

void PanelMonkey::act()
{
    if (m_head.backlog() > kMostWaiting)
        return;
    if (m_random.bounded(100) < 2)
        return chooseFromMenu();
    const Control &control = m_controls[m_random.bounded(int(m_controls.size()))];
    if (!control.widget->isVisible() || !control.widget->isEnabled())
        return;
    control.widget->window()->activateWindow();
    control.widget->setFocus();
    if (qobject_cast<QLineEdit *>(control.widget))
        type(control);
    else
        work(control);
}

/// A key or a click, and what the control shows at once is what it asks for.
void PanelMonkey::work(const Control &control)
{
    static const QList<Qt::Key> keys{ Qt::Key_Up, Qt::Key_Down, Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End };
    const QByteArray before = shownValue(control);
    const bool isButton = qobject_cast<QAbstractButton *>(control.widget);
    if (isButton)
        QTest::keyClick(control.widget, Qt::Key_Space);
    else
        QTest::keyClick(control.widget, keys[m_random.bounded(int(keys.size()))]);
    const QByteArray after = shownValue(control);
    for (const QByteArray &setting : isButton || after != before ? control.settings : QByteArrayList())
        m_ledger.ask(setting + ':' + after);
}

void PanelMonkey::type(const Control &control)
{
    const QByteArrayList choices = control.form.split('|');
    const QByteArrayList choice = choices[m_random.bounded(int(choices.size()))].split('=');
    QTest::keySequence(control.widget, QKeySequence::SelectAll);
    QTest::keyClicks(control.widget, QString::fromLatin1(choice[0]));
    QTest::keyClick(control.widget, Qt::Key_Return);
    m_ledger.ask(control.settings[0] + ':' + choice[1]);
}

void PanelMonkey::chooseFromMenu()
{
    const MenuEntry &entry = kMenu[m_random.bounded(int(std::size(kMenu)))];
    m_ledger.ask(entry.set);
    m_head.window().findChild<QAction *>(QLatin1StringView(entry.action))->trigger();
}

QByteArray PanelMonkey::shownValue(const Control &control) const
{
    constexpr std::array kVideoSources{ "0", "1", "2", "3", "6", "7" };
    if (const auto *const box = qobject_cast<QComboBox *>(control.widget)) {
        const int index = box->currentIndex();
        if (control.form == "mode")
            return modeNamed(box->currentText());
        if (control.form == "source")
            return QByteArray("123ABC").mid(index, index >= 0 ? 1 : 0);
        if (control.form == "video")
            return index >= 0 ? kVideoSources.at(std::size_t(index)) : "";
        return QByteArray::number(control.form == "less one" ? index - 1 : index);
    }
    if (const auto *const slider = qobject_cast<QSlider *>(control.widget))
        return QByteArray::number(slider->value());
    if (const auto *const spinBox = qobject_cast<QAbstractSpinBox *>(control.widget))
        return spinBox->text().toLatin1();
    if (const auto *const check = qobject_cast<QCheckBox *>(control.widget)) {
        if (control.form == "index")
            return check->isChecked() ? "0" : "0.35";
        return check->isChecked() ? "1" : "0";
    }
    const auto *const button = qobject_cast<QPushButton *>(control.widget);
    return button && button->text() == u"ON" ? "1" : "0";
}
