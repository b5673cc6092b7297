#pragma once

#include "remote/commands/Options.h"
#include "remote/commands/Output.h"
#include "remote/files/RecordingWriter.h"
#include "remote/wire/ClientLink.h"
#include "remote/wire/Requester.h"

#include <memory>
#include <optional>

namespace remote {

/// What a command works with: its options, open links, and output.
class Session : public QObject
{
    Q_OBJECT

public:
    explicit Session(const Options &options);

    [[nodiscard]] const Options &options() const { return m_options; }
    [[nodiscard]] Output &output() { return m_output; }
    /// Only for commands that use the remote link.
    [[nodiscard]] Requester &requester() { return *m_requester; }
    [[nodiscard]] RecordingWriter &recorder() { return m_recorder; }
    /// The open links, the remote link first.
    [[nodiscard]] QList<ClientLink *> links() const;

    /// Opens the links that the command uses, without sending anything. @return what is wrong; empty if nothing is
    [[nodiscard]] QString openLinks();
    /// Starts the recording if one is wanted. @return the exit code of a failure, once it is reported
    [[nodiscard]] std::optional<int> openRecording();
    /// Reports to the head that a client is present.
    void reportPresence();

Q_SIGNALS:
    void linkLost(const QByteArray &name);

private:
    [[nodiscard]] QString openLink(std::unique_ptr<ClientLink> &link, const QByteArray &name, const QString &path);

    const Options m_options;
    Output m_output;
    RecordingWriter m_recorder;
    std::unique_ptr<ClientLink> m_remote;
    std::unique_ptr<ClientLink> m_status;
    std::unique_ptr<Requester> m_requester;
};

} // namespace remote
