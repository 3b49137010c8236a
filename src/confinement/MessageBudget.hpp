#pragma once

#include <cstddef>

namespace pagora {

// Detects pages that flood the program with messages. Each kind has a rate limit far above what books need, and so have
// the bytes of all kinds together.
class MessageBudget {
public:
    enum class Message {
        // A change of the address, of the title, or a dialog.
        Notice,
        // A navigation, in a frame too.
        Navigation,
        // A picture, a style sheet, a request.
        Resource,
    };

    // Whether the page is within its budget with this message. `now` is in seconds and never decreases.
    bool take(Message message, std::size_t bytes, double now);
    // Another document begins.
    void startDocument() { _resources = 0; }

private:
    double _second = 0;
    // The used fraction of this second's budget.
    double _spent = 0;
    // Of this document.
    int _resources = 0;
};

}
