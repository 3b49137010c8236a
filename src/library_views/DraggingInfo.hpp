#pragma once

#include <optional>
#include <string>
#include <vector>

namespace pagora {

// The operations that a drag allows, as a bit mask. `Generic` lets the destination decide.
struct DragOperation {
    using Mask = unsigned;
    static constexpr Mask None = 0;
    static constexpr Mask Copy = 1;
    static constexpr Mask Link = 2;
    static constexpr Mask Generic = 4;
    static constexpr Mask Move = 16;
};

// A drag over a library view.
struct DraggingInfo {
    // Absolute paths in the order of the drag; nullopt if the drag offers no file names.
    std::optional<std::vector<std::string>> fileNames;
    // The operations that the source allows.
    DragOperation::Mask sourceOperations = DragOperation::None;
};

// Accepts or rejects drags over a library view.
class DropDelegate {
public:
    virtual ~DropDelegate() = default;
    // Returns the operation of a drop: `Generic`, or none for a rejected drag. Brings the program to the front.
    virtual DragOperation::Mask validateDrop(const DraggingInfo& drag) = 0;
    // Returns the reason of a rejection, for the user.
    virtual std::string whyRefused(const DraggingInfo& drag) const = 0;
    virtual bool prepareForDragOperation() const { return true; }
    // Imports all files of the drag. Always returns true.
    virtual bool acceptDrop(const DraggingInfo& drag) = 0;
};

}
