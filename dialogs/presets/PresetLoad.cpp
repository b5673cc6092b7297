#include "dialogs/presets/PresetLoad.h"

#include "channels/UniversalChan.h"
#include "controls/QListWidgetPresets.h"

#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

PresetLoad::PresetLoad(ChannelLink *controller, const QStringList &names, QWidget *parent)
    : PresetDialog({ u"PresetLoad"_s, u"Load Preset"_s, u"Load"_s, UniversalChan::Commands::RESTORE }, controller,
                   names, parent)
    , m_lblFileName(new QLabel(this))
{
    m_lblFileName->setObjectName(u"lblFileName"_s);
    m_lblFileName->setTextFormat(Qt::PlainText);
    QFont font = m_lblFileName->font();
    font.setPointSize(14);
    font.setBold(true);
    m_lblFileName->setFont(font);
    m_lblFileName->setStyleSheet(u"background-color: rgb(229, 227, 225);"_s);
    m_lblFileName->setFrameShape(QFrame::Panel);
    m_lblFileName->setMinimumHeight(36);
    m_lblFileName->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed); // a long name does not widen the dialog
    setUp(u"Preset to load"_s, m_lblFileName);
    connect(button(), &QPushButton::clicked, this, &PresetLoad::btnLoad_clicked, Qt::QueuedConnection);
    if (list()->count() > 0) {
        list()->setCurrentRow(0);
        list()->setFocus();
        listWidgetFileNames_currentItemChanged(list()->currentItem());
    }
}

void PresetLoad::btnLoad_clicked() { act(); }

void PresetLoad::setChosenName(const QString &name) { m_lblFileName->setText(name); }

QString PresetLoad::chosenName() const { return m_lblFileName->text(); }
