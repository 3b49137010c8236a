#include "tests/support/WitnessServer.hpp"

#include <algorithm>
#include <cctype>
#include <cstdlib>

namespace pagora::test {

namespace {

constexpr std::size_t maxHeadLength = 1 << 20;
constexpr guint timeout = 30;

std::size_t lengthOfBody(std::string head)
{
    std::transform(head.begin(), head.end(), head.begin(), [](unsigned char c) { return std::tolower(c); });
    const auto at = head.find("\r\ncontent-length:");
    return at == std::string::npos ? 0 : std::strtoul(head.c_str() + at + 17, nullptr, 10);
}

// The received part of the head and the body.
std::string readRequest(GInputStream* input)
{
    std::string request;
    std::size_t wanted = 0;
    char bytes[4096];
    while (wanted == 0 || request.size() < wanted) {
        const auto count = g_input_stream_read(input, bytes, sizeof bytes, nullptr, nullptr);
        if (count <= 0 || request.size() > maxHeadLength)
            break;
        request.append(bytes, static_cast<std::size_t>(count));
        const auto end = request.find("\r\n\r\n");
        if (end != std::string::npos)
            wanted = end + 4 + lengthOfBody(request.substr(0, end));
    }
    return request;
}

}

WitnessServer::WitnessServer()
    : _service(g_threaded_socket_service_new(16))
    , _notes(std::make_shared<Notes>())
{
    GInetAddress* loopback = g_inet_address_new_loopback(G_SOCKET_FAMILY_IPV4);
    GSocketAddress* wanted = g_inet_socket_address_new(loopback, 0);
    GSocketAddress* given = nullptr;
    if (!g_socket_listener_add_address(
            G_SOCKET_LISTENER(_service), wanted, G_SOCKET_TYPE_STREAM, G_SOCKET_PROTOCOL_TCP, nullptr, &given, nullptr))
        std::abort();
    _port = g_inet_socket_address_get_port(G_INET_SOCKET_ADDRESS(given));
    g_object_unref(given);
    g_object_unref(wanted);
    g_object_unref(loopback);
    auto held = std::make_unique<std::shared_ptr<Notes>>(_notes);
    const auto letGo = [](gpointer data, GClosure*) {
        std::default_delete<std::shared_ptr<Notes>>()(static_cast<std::shared_ptr<Notes>*>(data));
    };
    g_signal_connect_data(_service, "run", G_CALLBACK(&WitnessServer::serve), held.release(), letGo, GConnectFlags(0));
    g_socket_service_start(_service);
}

WitnessServer::~WitnessServer()
{
    g_socket_service_stop(_service);
    g_socket_listener_close(G_SOCKET_LISTENER(_service));
    g_object_unref(_service);
}

std::string WitnessServer::url(const std::string& path) const
{
    return "http://127.0.0.1:" + std::to_string(_port) + "/" + path;
}

void WitnessServer::answer(const std::string& path, const std::string& headers, const std::string& body)
{
    const std::lock_guard lock(_notes->mutex);
    _notes->answers["/" + path] = { headers, body };
}

std::vector<std::string> WitnessServer::requests() const
{
    const std::lock_guard lock(_notes->mutex);
    return _notes->requests;
}

bool WitnessServer::heard(const std::string& text) const
{
    const std::lock_guard lock(_notes->mutex);
    return std::any_of(_notes->requests.begin(), _notes->requests.end(),
        [&](const std::string& request) { return request.find(text) != std::string::npos; });
}

void WitnessServer::forget()
{
    const std::lock_guard lock(_notes->mutex);
    _notes->requests.clear();
}

gboolean WitnessServer::serve(GThreadedSocketService*, GSocketConnection* connection, GObject*, gpointer data)
{
    const auto notes = *static_cast<std::shared_ptr<Notes>*>(data);
    g_socket_set_timeout(g_socket_connection_get_socket(connection), timeout);
    const auto request = readRequest(g_io_stream_get_input_stream(G_IO_STREAM(connection)));
    std::string reply;
    if (!request.empty()) {
        const std::lock_guard lock(notes->mutex);
        notes->requests.push_back(request);
        reply = notes->answerTo(request);
    }
    g_output_stream_write_all(
        g_io_stream_get_output_stream(G_IO_STREAM(connection)), reply.data(), reply.size(), nullptr, nullptr, nullptr);
    g_io_stream_close(G_IO_STREAM(connection), nullptr, nullptr);
    return TRUE;
}

std::string WitnessServer::Notes::answerTo(const std::string& request) const
{
    constexpr auto redirection = "/to?";
    const auto start = request.find(' ') + 1;
    const auto path = request.substr(start, request.find(' ', start) - start);
    const std::string end = "Connection: close\r\nAccess-Control-Allow-Origin: *\r\n";
    if (path.starts_with(redirection))
        return "HTTP/1.1 302 Found\r\nLocation: " + path.substr(4) + "\r\n" + end + "Content-Length: 0\r\n\r\n";
    const auto found = answers.find(path);
    const auto answer = found == answers.end() ? Answer { "Content-Type: text/plain\r\n", "" } : found->second;
    return "HTTP/1.1 200 OK\r\n" + answer.headers + end + "Content-Length: " + std::to_string(answer.body.size())
        + "\r\n\r\n" + answer.body;
}

}
