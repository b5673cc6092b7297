#include "channels/BistChan.h"

void BistChan::processSpecial(int row, const Report &report)
{
    if (row == at(Commands::SLAVE))
        return;
    if (row == at(Commands::NAME) && !report.refused && report.data != getNAME())
        store(row, report.data);
    processUnknown(report);
}

void BistChan::processUnknown(const Report &report)
{
    if (!report.refused)
        m_values.insert(report.mnemonic, report.data);
}
