#pragma once

#include <QByteArrayView>

/// SIGINT and SIGTERM, and access to files that may block without being deaf to them.
namespace EndSignals {

/// From now on these signals no longer end the program. @return a descriptor that is readable once one has come
[[nodiscard]] int take();
/// Whether one has come.
[[nodiscard]] bool haveCome();

/// Opens a file that exists, for writing without truncating it; waits for the reader of a FIFO.
/// @return the descriptor; -1 with errno set, EINTR if an end signal came first
[[nodiscard]] int openForWriting(const char *path);

/// Writes everything. @return 0, otherwise what went wrong as an errno; EINTR if an end signal came first
[[nodiscard]] int write(int file, QByteArrayView bytes);

/// Writes a message. Once an end signal has come, only what is taken at once.
void tell(int file, QByteArrayView bytes);

/// Waits until @p file can be read, for as long as that takes at most. @return false if an end signal came first
[[nodiscard]] bool waitToRead(int file, int timeoutMs);

} // namespace EndSignals
