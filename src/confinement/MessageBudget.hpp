#pragma once

#include <cstddef>

namespace pagora {

// Detects pages that flood the program with messages. Each kind has a rate limit far above what books need, and so does
// the size of all kinds together.
class MessageBudget {
public:
    enum class Message {
        // A change of the URL or the title, or a dialog.
        Notice,
        // A navigation, also in a frame.
        Navigation,
        // A picture, a style sheet, a request.
        Resource,
    };

    // Charges the message. Returns whether the page is still within its budget. `now` is in seconds and never
    // decreases.
    bool take(Message message, std::size_t bytes, double now);
    // Called when another document starts.
    void startDocument() { _resources = 0; }

private:
    double _second = 0;
    // The used fraction of this second's budget.
    double _spent = 0;
    // Number of resources of this document.
    int _resources = 0;
};

}
