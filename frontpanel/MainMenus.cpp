#include "frontpanel/MainMenus.h"

#include "controls/ValueText.h"
#include "ui_MainWindow.h"

#include <QStringList>

using namespace Qt::StringLiterals;

void MainMenus::enable(bool hasCombiner, bool hasTape, qsizetype demodulators) const
{
    const QList<QAction *> windows{ ui.actionSystemCardsConfiguration, ui.actionSystemChannelNaming };
    for (QAction *action :
         ui.menuPresets->actions() + ui.menuSlaving->actions() + ui.menu10MHzReference->actions() + windows)
        action->setEnabled(true);
    ui.actionCombiner_Zero->setEnabled(hasCombiner);
    if (hasTape)
        ui.actionTape->setEnabled(true);
    for (qsizetype i = 0; i < eyeActions().size(); ++i)
        eyeActions()[i]->setEnabled(i < demodulators);
}

void MainMenus::enableTmoip() const { ui.actionTMoIP->setEnabled(true); }

bool MainMenus::showSlaving(const QString &SLAVE) const
{
    const QList<QAction *> modes{ ui.actionNoSlaving, ui.actionDiversitySlaving, ui.actionFrequencyDiversitySlaving };
    const auto chosen = QStringList{ u"0"_s, u"1"_s, u"2"_s }.indexOf(SLAVE);
    if (chosen < 0)
        return false;
    for (qsizetype mode = 0; mode < modes.size(); ++mode)
        modes[mode]->setChecked(mode == chosen);
    return true;
}

void MainMenus::showReference(const QString &TMRF) const
{
    if (TMRF != "0"_L1 && TMRF != "1"_L1 && ValueText::isKnown(TMRF))
        return;
    ui.actionExternalRef->setChecked(TMRF == "0"_L1);
    ui.actionInternalRef->setChecked(TMRF == "1"_L1);
}

QList<QAction *> MainMenus::eyeActions() const
{
    return { ui.actionDemod1_EyeConst, ui.actionDemod2_EyeConst, ui.actionDemod3_EyeConst };
}
