#include "NamedSocket.h"

#include <cerrno>
#include <cstddef>
#include <sys/un.h>
#include <unistd.h>

namespace {

// Names that begin with a zero byte are no files.
socklen_t AddressOf(const std::string& name, sockaddr_un& address)
{
    address = {};
    address.sun_family = AF_UNIX;
    const size_t length = name.copy(address.sun_path + 1, sizeof(address.sun_path) - 1);
    return static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + length);
}

int NewSocket()
{
    return socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
}

int CloseWithError(int descriptor)
{
    const int error = errno;
    close(descriptor);
    errno = error;
    return -1;
}

} // namespace

namespace kernel {

int ListenAs(const std::string& name)
{
    sockaddr_un address;
    const socklen_t length = AddressOf(name, address);
    const int listener = NewSocket();
    if (listener < 0)
        return -1;
    if (bind(listener, reinterpret_cast<sockaddr*>(&address), length) == 0
        && listen(listener, SOMAXCONN) == 0)
        return listener;
    return CloseWithError(listener);
}

int ConnectTo(const std::string& name)
{
    sockaddr_un address;
    const socklen_t length = AddressOf(name, address);
    const int connection = NewSocket();
    if (connection < 0)
        return -1;
    if (connect(connection, reinterpret_cast<sockaddr*>(&address), length) == 0)
        return connection;
    return CloseWithError(connection);
}

bool PeerOf(int connection, ucred& who)
{
    socklen_t size = sizeof(who);
    return getsockopt(connection, SOL_SOCKET, SO_PEERCRED, &who, &size) == 0;
}

} // namespace kernel
