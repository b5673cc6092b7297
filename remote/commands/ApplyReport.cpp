#include "remote/commands/ApplyReport.h"

#include "remote/files/Json.h"
#include "remote/wire/Escaping.h"

namespace remote {

QByteArray ApplyReport::text() const
{
    QByteArray text = QByteArray::number(same) + " settings the same, " + QByteArray::number(changed) +
                      " changed back, " + QByteArray::number(refused.size()) + " refused";
    if (isComplete())
        return text + ": everything equals the file";
    if (!refused.isEmpty())
        text += ':';
    for (const Refusal &refusal : refused) {
        const QByteArray value = refusal.value.isEmpty() ? "refused" : "still " + Escaping::brief(refusal.value);
        text += "\n" + refusal.key + " wanted " + Escaping::brief(refusal.wanted) + ", " + value;
    }
    return text;
}

QByteArray ApplyReport::json() const
{
    QByteArrayList refusals;
    for (const Refusal &refusal : refused) {
        refusals.append(Json::line({ { "setting", Json::quoted(refusal.key) },
                                     { "wanted", Json::quoted(refusal.wanted) },
                                     { "value", Json::quoted(refusal.value) } }));
    }
    return Json::line({ { "same", Json::number(same) },
                        { "changed", Json::number(changed) },
                        { "refused", '[' + refusals.join(", ") + ']' },
                        { "skipped", Json::list(skipped) } });
}

} // namespace remote
