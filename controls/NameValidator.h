#pragma once

#include <QRegularExpressionValidator>

/// Refuses control characters in a name, since they frame the messages on the wire, and on request blanks, which
/// separate the names in the chassis' list of presets.
class NameValidator : public QRegularExpressionValidator
{
    Q_OBJECT

public:
    enum class Blanks { Allowed, Refused };

    NameValidator(Blanks blanks, QObject *parent);
};
