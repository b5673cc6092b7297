#include "channels/DmdRegisters.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using Commands = DmdCatalogue::Commands;
using Register = DmdRegisters::Register;
using Form = Register::Form;

constexpr uint kDqmBits = 0x30;
constexpr uint kEqualizerBit = 0x4000;
constexpr int kValueSize = 4;

consteval int at(QLatin1StringView mnemonic) { return Catalogue::at(DmdCatalogue::kTable, mnemonic); }

constexpr std::array kRegisters{
    Register{ QLatin1StringView("82"), at(Commands::DDQM), Form::DqmBits, Commands::DQMON },
    Register{ QLatin1StringView("84"), at(Commands::DFSZ), Form::Digits, Commands::DQMFS },
    Register{ QLatin1StringView("85"), at(Commands::DFWD), Form::Digits, {} },
    Register{ QLatin1StringView("86"), at(Commands::MEAN), Form::Digits, {} },
    Register{ QLatin1StringView("87"), at(Commands::BEPO), Form::Digits, {} },
    Register{ QLatin1StringView("83"), at(Commands::ADEQ), Form::Enable, Commands::DEQE },
    Register{ QLatin1StringView("39"), at(Commands::FGA1), Form::Decimal, {} },
    Register{ QLatin1StringView("3A"), at(Commands::FGA2), Form::Decimal, {} },
    Register{ QLatin1StringView("3B"), at(Commands::MPUV), Form::Decimal, {} },
};

QString hexDigits(uint value) { return u"%1"_s.arg(value & 0xffff, kValueSize, 16, QChar(u'0')); }

std::size_t indexOf(const Register &reg) { return static_cast<std::size_t>(&reg - kRegisters.data()); }

template <typename Predicate>
const Register *firstOf(Predicate predicate)
{
    const auto reg = std::ranges::find_if(kRegisters, predicate);
    return reg != kRegisters.end() ? &*reg : nullptr;
}

} // namespace

DmdRegisters::DmdRegisters(bool hasDirectCommands) : m_hasDirectCommands(hasDirectCommands)
{
    static_assert(kRegisters.size() == kCount);
    m_texts.fill(u"Unknown"_s);
}

const Register *DmdRegisters::ofRow(int row)
{
    return firstOf([row](const Register &reg) { return reg.row == row; });
}

const Register *DmdRegisters::numbered(QStringView number)
{
    return firstOf([number](const Register &reg) { return number.compare(reg.number, Qt::CaseInsensitive) == 0; });
}

const Register *DmdRegisters::ofDirectCommand(const QString &mnemonic)
{
    return firstOf([&mnemonic](const Register &reg) { return !mnemonic.isEmpty() && mnemonic == reg.directCommand; });
}

bool DmdRegisters::isDirect(const Register &reg) const { return m_hasDirectCommands && !reg.directCommand.isEmpty(); }

bool DmdRegisters::isRead(const Register &reg) const { return !isDirect(reg) || reg.form == Form::Enable; }

bool DmdRegisters::isWrittenWhole(const Register &reg) const
{
    return isDirect(reg) || reg.form == Form::Digits || reg.form == Form::Decimal;
}

const QString &DmdRegisters::text(const Register &reg) const { return m_texts[indexOf(reg)]; }

void DmdRegisters::take(const Register &reg, QStringView text)
{
    m_texts[indexOf(reg)] = text.left(kValueSize).toString();
}

QString DmdRegisters::setting(const Register &reg) const
{
    const uint value = text(reg).toUInt(nullptr, 16);
    switch (reg.form) {
    case Form::DqmBits:
        return (value & kDqmBits) == kDqmBits ? u"1"_s : u"0"_s;
    case Form::Enable:
        return value != 0 ? u"1"_s : u"0"_s;
    case Form::Digits:
        return text(reg);
    case Form::Decimal:
        return QString::number(value);
    }
    Q_UNREACHABLE();
}

QString DmdRegisters::textFor(const Register &reg, const QString &setting) const
{
    const uint held = text(reg).toUInt(nullptr, 16);
    const bool on = setting == "1"_L1;
    switch (reg.form) {
    case Form::DqmBits:
        return hexDigits(on ? held | kDqmBits : held & ~kDqmBits);
    case Form::Enable:
        return hexDigits(on ? held | kEqualizerBit : 0); // any bit enables it
    case Form::Digits:
    case Form::Decimal:
        return setting;
    }
    Q_UNREACHABLE();
}
