#pragma once

#include "remote/wire/Requester.h"

#include <QHash>

namespace remote {

/// Queries many values and collects them.
class SettingsReader : public QObject
{
    Q_OBJECT

public:
    /// Values by key. Values that the head refused are missing.
    using Values = QHash<QByteArray, QByteArray>;

    explicit SettingsReader(Requester &requester) : m_requester(requester) {}

    /// Queries all @p keys; one pass at a time.
    void read(const QByteArrayList &keys);

Q_SIGNALS:
    void progressed(qsizetype done, qsizetype all);
    void finished(const SettingsReader::Values &values);
    /// The head stopped answering after @p done of @p all.
    void silent(qsizetype done, qsizetype all);

private:
    void take(const QByteArray &key, const Requester::Answer &answer);

    Requester &m_requester;
    Values m_values;
    qsizetype m_done = 0;
    qsizetype m_all = 0;
};

} // namespace remote
