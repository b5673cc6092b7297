#include "dialogs/tmoip/TmoipEntry.h"

#include "controls/ValueText.h"
#include "dialogs/RefusalBox.h"

#include <algorithm>

using namespace Qt::StringLiterals;

bool TmoipEntry::isNumber(const QString &text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

bool TmoipEntry::validateIP(const QString &text)
{
    const auto isPart = [](const QString &part) {
        bool fits = false; // an int, which a long row of digits does not
        return isNumber(part) && part.toInt(&fits) <= 255 && fits;
    };
    const QStringList parts = text.split(u'.');
    return parts.size() == 4 && std::all_of(parts.begin(), parts.end(), isPart);
}

void TmoipEntry::refuse(const QWidget *widget, const QString &text)
{
    RefusalBox::open(QMessageBox::Information, u"Error"_s, text, widget->window());
}

std::optional<QString> TmoipEntry::take(const EntryField &field, const QString &complaint)
{
    auto typed = field.take();
    if (!typed || validateIP(*typed))
        return typed;
    field.end(true);
    refuse(field.line(), complaint);
    return std::nullopt;
}

QString TmoipEntry::whole(const QString &value)
{
    return ValueText::shown(value, std::max(value.size(), ValueText::kLongest));
}
