#include "dialogs/demodulator/DmdChoice.h"

#include "controls/NumberText.h"

#include <algorithm>
#include <array>

namespace {

using Commands = DmdChan::Commands;
using D = DmdChan;
using Form = DmdChoice::Form;

/// Sources of a video output in the order of its list.
constexpr std::array kVideoSources{ 0, 1, 2, 3, 6, 7 };
constexpr int kFirstMovedSource = 6;
constexpr int kSourceGap = 2;

constexpr std::array kChoices{
    DmdChoice{ Commands::BSDP, &D::getBSDP, &D::setBSDP },
    DmdChoice{ Commands::BSCP, &D::getBSCP, &D::setBSCP },
    DmdChoice{ Commands::BSCL, &D::getBSCL, &D::setBSCL },
    DmdChoice{ Commands::VIDP, &D::getVIDP, &D::setVIDP },
    DmdChoice{ Commands::BSIL, &D::getBSIL, &D::setBSIL },
    DmdChoice{ Commands::TRKD, &D::getTRKD, &D::setTRKD },
    DmdChoice{ Commands::DAFC, &D::getDAFC, &D::setDAFC },
    DmdChoice{ Commands::VCP1, &D::getVCP1, &D::setVCP1, Form::Position, &D::setVCP2 },
    DmdChoice{ Commands::VDE1, &D::getVDE1, &D::setVDE1, Form::Position, &D::setVDE2 },
    DmdChoice{ Commands::DFIR, &D::getDFIR, &D::setDFIR, Form::PositionLessOne },
    DmdChoice{ Commands::DFAQ, &D::getDFAQ, &D::setDFAQ },
    DmdChoice{ Commands::CPT0, &D::getCPT0, &D::setCPT0, Form::VideoSource },
    DmdChoice{ Commands::CPT1, &D::getCPT1, &D::setCPT1, Form::VideoSource },
    DmdChoice{ Commands::CPT2, &D::getCPT2, &D::setCPT2, Form::VideoSource },
    DmdChoice{ Commands::CPT3, &D::getCPT3, &D::setCPT3, Form::VideoSource },
    DmdChoice{ Commands::CPT4, &D::getCPT4, &D::setCPT4, Form::VideoSource },
    DmdChoice{ Commands::CPT5, &D::getCPT5, &D::setCPT5, Form::VideoSource },
    DmdChoice{ Commands::CPT6, &D::getCPT6, &D::setCPT6, Form::VideoSource },
    DmdChoice{ Commands::CPT7, &D::getCPT7, &D::setCPT7, Form::VideoSource },
    DmdChoice{ Commands::BSIC, &D::getBSIC, &D::setBSIC },
    DmdChoice{ Commands::VLPF, &D::getVLPF, &D::setVLPF },
    DmdChoice{ Commands::VAFL, &D::getVAFL, &D::setVAFL },
};

} // namespace

void DmdChoice::choose(DmdChan &channel, int index) const
{
    const int number = form == Form::VideoSource       ? kVideoSources.at(std::size_t(index))
                       : form == Form::PositionLessOne ? index - 1
                                                       : index;
    const QString value = QString::number(number);
    (channel.*set)(value);
    if (setToo)
        (channel.*setToo)(value);
}

qint64 DmdChoice::positionOf(const QString &value) const
{
    const auto position = NumberText::parseWhole(value);
    if (!position)
        return -1;
    if (form == Form::PositionLessOne)
        return qint64(*position) + 1;
    return form == Form::VideoSource && *position >= kFirstMovedSource ? *position - kSourceGap : *position;
}

const DmdChoice &DmdChoice::of(QLatin1StringView mnemonic)
{
    const auto found = std::ranges::find(kChoices, mnemonic, &DmdChoice::mnemonic);
    Q_ASSERT(found != kChoices.end());
    return *found;
}
