#include "remote/commands/Words.h"

#include <algorithm>

namespace remote {

namespace {

constexpr char kMark = '\x01';

} // namespace

bool Words::looksLikeOption(const QString &word)
{
    return word.size() > 1 && word[0] == u'-' && (word[1] == u'-' || word[1].isLetter());
}

std::vector<std::string> Words::marked(const QStringList &words)
{
    std::vector<std::string> arguments;
    bool onlyValues = false; // behind "--"
    for (const QString &word : words) {
        if (!onlyValues && word == u"--") {
            onlyValues = true;
            continue;
        }
        std::string &argument = arguments.emplace_back(word.toLocal8Bit().toStdString());
        const size_t equals = argument.find('=');
        if (onlyValues || !looksLikeOption(word))
            argument.insert(0, argument.find_first_of("-+\x01") == 0 ? 1 : 0, kMark);
        else if (equals != std::string::npos && word.startsWith(u"--"))
            argument.insert(equals + 1, 1, kMark);
    }
    std::ranges::reverse(arguments);
    return arguments;
}

bool Words::isMarked(const std::string &argument) { return argument.starts_with(kMark); }

QString Words::unmarked(const std::string &argument)
{
    return QString::fromLocal8Bit(argument.c_str() + (isMarked(argument) ? 1 : 0));
}

} // namespace remote
