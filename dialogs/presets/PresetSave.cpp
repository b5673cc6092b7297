#include "dialogs/presets/PresetSave.h"

#include "channels/UniversalChan.h"
#include "controls/NameValidator.h"

#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

PresetSave::PresetSave(ChannelLink *controller, const QStringList &names, QWidget *parent)
    : PresetDialog({ u"PresetSave"_s, u"Save Preset"_s, u"Save"_s, UniversalChan::Commands::STORE }, controller, names,
                   parent)
    , m_lineFileName(new QLineEdit(this))
{
    m_lineFileName->setObjectName(u"lineFileName"_s);
    m_lineFileName->setAccessibleName(u"Name to save under"_s);
    m_lineFileName->setValidator(new NameValidator(NameValidator::Blanks::Refused, m_lineFileName));
    setUp(u"Save as (a name without blanks)"_s, m_lineFileName);
    connect(button(), &QPushButton::clicked, this, &PresetSave::btnSave_clicked, Qt::QueuedConnection);
    connect(m_lineFileName, &QLineEdit::textEdited, this, &PresetSave::lineFileName_textEdited, Qt::QueuedConnection);
    m_lineFileName->setFocus();
}

void PresetSave::btnSave_clicked() { act(); }

void PresetSave::lineFileName_textEdited(const QString &text) { button()->setEnabled(!text.isEmpty()); }

void PresetSave::setChosenName(const QString &name) { m_lineFileName->setText(name); }

QString PresetSave::chosenName() const { return m_lineFileName->text(); }
