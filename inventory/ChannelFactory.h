#pragma once

#include <QString>

#include <memory>
#include <vector>

class Channel;
class ChannelLink;

/// Makes the channels that a card list names.
namespace ChannelFactory {

/// One channel for every function on the card list, in the order in which they are read at start-up. A function is
/// there if its micro addresses appear anywhere in the list.
/// @param link carries the channels' commands; outlives them
[[nodiscard]] std::vector<std::unique_ptr<Channel>> create(const QString &cardList, ChannelLink *link);

} // namespace ChannelFactory
