// Sockets by which programs of a machine find each other. Their names are no files: there is no
// folder that every user may write to and nobody can spoil; a name goes with its process, and the
// system itself tells who listens. Containers with a network of their own do not see each other's.
#pragma once

#include <string>
#include <sys/socket.h>

namespace kernel {

// Each returns a descriptor that the caller closes, which neither blocks nor is inherited; -1, with
// errno, on errors. Of a name 106 bytes count.
int ListenAs(const std::string& name); // EADDRINUSE: another does
int ConnectTo(const std::string& name); // who listens has yet to accept; ECONNREFUSED: nobody

// Who is at the other end; of ConnectTo() the process that listens. False if that is not known.
bool PeerOf(int connection, ucred& who);

} // namespace kernel
