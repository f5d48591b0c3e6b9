// Replies of the X server, freed at the end of the block.
#pragma once

#include <cstdlib>
#include <memory>

struct FreeReply {
    void operator()(void* reply) const { free(reply); }
};

template <typename Reply>
using XcbReply = std::unique_ptr<Reply, FreeReply>;

// Null where the request failed or the connection has broken.
template <typename Reply>
XcbReply<Reply> MakeReply(Reply* reply)
{
    return XcbReply<Reply>(reply);
}
