#pragma once

#include "workbench/engine/protocol/Messages.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace workbench
{

std::vector<std::uint8_t> encode(const Request& request);
std::vector<std::uint8_t> encode(const Event& event);

/**
 * Empty unless the bytes are one whole message, with every choice one that there is and every frame and size within its
 * limits: what a client gets here can be used, whatever the worker has become. The slot of a picture is checked by the
 * pool, texts are only as long as the message.
 */
std::optional<Request> decodeRequest(std::span<const std::uint8_t> bytes);
std::optional<Event> decodeEvent(std::span<const std::uint8_t> bytes);

} // namespace workbench
