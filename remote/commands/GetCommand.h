#pragma once

#include "remote/commands/Command.h"

#include <QList>

#include <optional>

namespace remote {

/// Prints the values of settings.
class GetCommand : public Command
{
    Q_OBJECT

public:
    using Command::Command;
    void start() override;
    [[nodiscard]] bool needsReader() const override { return true; }

private:
    void printAnswered();
    void print(const QByteArray &key, const Requester::Answer &answer);

    QByteArrayList m_keys;
    QList<std::optional<Requester::Answer>> m_answers; ///< one per key
    qsizetype m_printed = 0;
    int m_exitCode = ExitCode::Fine;
};

} // namespace remote
