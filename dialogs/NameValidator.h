#pragma once

#include <QRegularExpressionValidator>

/// Refuses what a name must not hold: control characters, which frame the messages on the wire, and for names that
/// the chassis lists separated by blanks also these.
class NameValidator : public QRegularExpressionValidator
{
    Q_OBJECT

public:
    enum class Blanks { Allowed, Refused };

    NameValidator(Blanks blanks, QObject *parent);
};
