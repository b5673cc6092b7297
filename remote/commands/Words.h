#pragma once

#include <QStringList>

#include <string>
#include <vector>

/// The words of the command line on their way through the library that reads it. A mark keeps it from taking a value
/// such as "-.5" or "++" for something else, and an empty one behind "=" for none.
namespace remote::Words {

/// Something like "-x" is an option misspelt, "-5", "-.5" and "-" are values.
[[nodiscard]] bool looksLikeOption(const QString &word);
/// The words for the library, last first.
[[nodiscard]] std::vector<std::string> marked(const QStringList &words);
[[nodiscard]] bool isMarked(const std::string &argument);
/// The text that came back from the library, without its mark.
[[nodiscard]] QString unmarked(const std::string &argument);

} // namespace remote::Words
