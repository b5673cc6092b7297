#include "remote/commands/ApplyReport.h"

#include "remote/files/Json.h"
#include "remote/wire/Escaping.h"

#include <nlohmann/json.hpp>

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
    Json::Value report = { { "same", same },
                           { "changed", changed },
                           { "refused", Json::Value::array() },
                           { "skipped", Json::Value::array() } };
    for (const Refusal &refusal : refused) {
        report["refused"].push_back({ { "setting", Json::text(refusal.key) },
                                      { "wanted", Json::text(refusal.wanted) },
                                      { "value", Json::text(refusal.value) } });
    }
    for (const QByteArray &name : skipped)
        report["skipped"].push_back(Json::text(name));
    return Json::line(report);
}

} // namespace remote
