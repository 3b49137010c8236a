#pragma once

#include <gio/gio.h>

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace pagora::test {

// A local server that records its requests. Answers on its own threads, with an empty body unless an answer was set.
// "/to?URL" redirects to that URL.
class WitnessServer {
public:
    WitnessServer();
    ~WitnessServer();
    WitnessServer(const WitnessServer&) = delete;
    WitnessServer& operator=(const WitnessServer&) = delete;

    // Returns the URL of a path without its first slash.
    std::string url(const std::string& path = {}) const;
    // Sets the answer for a path. Each header ends with a line break.
    void answer(const std::string& path, const std::string& headers, const std::string& body);
    // Returns all requests in order, with headers and bodies.
    std::vector<std::string> requests() const;
    // Returns whether the headers or the body of a request contain the text.
    bool heard(const std::string& text) const;
    void forget();

private:
    struct Answer {
        std::string headers;
        std::string body;
    };
    // Shared by the threads; destroyed with the last of them.
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
