#pragma once

#include <QString>

#include <memory>
#include <vector>

class Channel;
class ChannelLink;

/// Making of channels from what the chassis says it holds.
namespace ChannelFactory {

/// One channel for every function that the card list tells of, in the order in which they are read at start-up.
/// A function is told by its micro addresses anywhere in the list.
/// @param link carries the channels' commands; outlives them
[[nodiscard]] std::vector<std::unique_ptr<Channel>> create(const QString &cardList, ChannelLink *link);

} // namespace ChannelFactory
