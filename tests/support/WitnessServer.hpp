#pragma once

#include <gio/gio.h>

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace pagora::test {

// A server on this machine that writes down every request, and what came with it. It answers on threads of its own,
// with nothing where it was given nothing to answer; "/to?" and a URL leads to that URL.
class WitnessServer {
public:
    WitnessServer();
    ~WitnessServer();
    WitnessServer(const WitnessServer&) = delete;
    WitnessServer& operator=(const WitnessServer&) = delete;

    // The URL of a path without its first slash.
    std::string url(const std::string& path = {}) const;
    // What is answered to a path from now on. Each header ends with a line break.
    void answer(const std::string& path, const std::string& headers, const std::string& body);
    // The requests until now in order, each with its headers and its body.
    std::vector<std::string> requests() const;
    // Whether one of the requests, with its headers and its body, holds the text.
    bool heard(const std::string& text) const;
    void forget();

private:
    struct Answer {
        std::string headers;
        std::string body;
    };
    // What the threads share; it goes with the last of them.
    struct Notes {
        std::string answerTo(const std::string& request) const;

        std::mutex mutex;
        std::vector<std::string> requests;
        std::map<std::string, Answer> answers;
    };
    static gboolean serve(
        GThreadedSocketService* service, GSocketConnection* connection, GObject* source, gpointer notes);

    GSocketService* _service;
    int _port = 0;
    std::shared_ptr<Notes> _notes;
};

}
