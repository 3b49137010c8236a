#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <string>
#include <sys/socket.h>
#include <unistd.h>

namespace pagora::test {

// A local server that accepts connections and never answers.
class SilentServer {
public:
    SilentServer()
        : _socket(socket(AF_INET, SOCK_STREAM, 0))
    {
        sockaddr_in address {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        bind(_socket, reinterpret_cast<sockaddr*>(&address), size);
        listen(_socket, 8);
        getsockname(_socket, reinterpret_cast<sockaddr*>(&address), &size);
        _port = ntohs(address.sin_port);
    }
    ~SilentServer() { close(_socket); }
    SilentServer(const SilentServer&) = delete;
    SilentServer& operator=(const SilentServer&) = delete;

    std::string url(const std::string& name) const { return "http://127.0.0.1:" + std::to_string(_port) + "/" + name; }

private:
    int _socket;
    int _port = 0;
};

}
