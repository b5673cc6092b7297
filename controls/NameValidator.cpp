#include "controls/NameValidator.h"

using namespace Qt::StringLiterals;

NameValidator::NameValidator(Blanks blanks, QObject *parent)
    : QRegularExpressionValidator(
          QRegularExpression(blanks == Blanks::Refused ? uR"([^\p{Cc}\s]*)"_s : uR"([^\p{Cc}]*)"_s,
                             QRegularExpression::UseUnicodePropertiesOption),
          parent)
{
}
