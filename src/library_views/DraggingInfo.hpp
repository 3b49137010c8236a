#pragma once

#include <optional>
#include <string>
#include <vector>

namespace pagora {

// What a drag may end in, as bits of a mask. `Generic` leaves it to the destination to decide.
struct DragOperation {
    using Mask = unsigned;
    static constexpr Mask None = 0;
    static constexpr Mask Copy = 1;
    static constexpr Mask Link = 2;
    static constexpr Mask Generic = 4;
    static constexpr Mask Move = 16;
};

// A drag as it is offered to a library view.
struct DraggingInfo {
    // Absolute paths in the order given; missing when the drag offers no file names.
    std::optional<std::vector<std::string>> fileNames;
    // What the source allows.
    DragOperation::Mask sourceOperations = DragOperation::None;
};

// Judges and takes what is dragged over a library view.
class DropDelegate {
public:
    virtual ~DropDelegate() = default;
    // What would be done with the drag: the generic operation, or none for a drag that is refused. The program comes to
    // the front.
    virtual DragOperation::Mask validateDrop(const DraggingInfo& drag) = 0;
    // Why a drag that is refused is refused, for the user.
    virtual std::string whyRefused(const DraggingInfo& drag) const = 0;
    virtual bool prepareForDragOperation() const { return true; }
    // Hands the files to the import, all of them; true in every case.
    virtual bool acceptDrop(const DraggingInfo& drag) = 0;
};

}
