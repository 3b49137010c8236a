#pragma once

#include <cstddef>

namespace pagora {

// Counts what a page tells the program, so that one that floods it is noticed. Each kind has a number a second that no
// page of a book comes near, and so have their bytes together.
class MessageBudget {
public:
    enum class Message {
        // A change of the address, of the title, or a dialog.
        Notice,
        // A decision on a step to another document, in a frame too.
        Navigation,
        // A picture, a style sheet, a request.
        Resource,
    };

    // Whether the page keeps to its budget with this message. `now` is in seconds and never goes back.
    bool take(Message message, std::size_t bytes, double now);
    // Another document begins.
    void startDocument() { _resources = 0; }

private:
    double _second = 0;
    // The part of this second's budget that is spent: 1 is all of it.
    double _spent = 0;
    // Of this document.
    int _resources = 0;
};

}
