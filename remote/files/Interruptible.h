#pragma once

#include <QByteArrayView>

/// Access to files that may block, cut short by the signals that end the program.
namespace remote::Interruptible {

/// Opens a file that exists, for writing without truncating it; waits for the reader of a FIFO.
/// @return the descriptor; -1 with errno set, EINTR if an end signal arrived first
[[nodiscard]] int openForWriting(const char *path);

/// Writes everything. @return 0, otherwise the fault as an errno; EINTR if an end signal arrived first
[[nodiscard]] int write(int file, QByteArrayView bytes);

/// Writes a message. Once an end signal has arrived, only what the file takes at once.
void writeMessage(int file, QByteArrayView bytes);

/// Waits until @p file can be read, at most @p timeoutMs. @return false if an end signal arrived first
[[nodiscard]] bool waitToRead(int file, int timeoutMs);

} // namespace remote::Interruptible
