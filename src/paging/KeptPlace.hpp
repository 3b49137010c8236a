#pragma once

#include <optional>

namespace pagora {

// The place in a chapter that stays in the middle of the page when late pictures or fonts change the layout. Places are
// fractions of the chapter.
class KeptPlace {
public:
    // The place to keep until the user navigates; nullopt if there is none.
    const std::optional<double>& toKeep() const { return _toKeep; }
    void setToKeep(std::optional<double> place) { _toKeep = place; }
    // Keeps the place that is shown now.
    void keepLast() { _toKeep = last(); }
    void userMoves() { _toKeep = std::nullopt; }

    // Returns the place to keep, otherwise the last noted one; nullopt if there is neither.
    std::optional<double> last() const { return _toKeep ? _toKeep : _noted; }
    void chapterChanges() { _noted = 0; }
    // Sets whether all resources of the chapter have arrived or failed.
    void setFrameIsLoaded(bool isLoaded) { _frameIsLoaded = isLoaded; }
    // Notes the place of the page at offset X of a chapter of S points in a view of W points. While pictures are still
    // loading, which lengthens the chapter, the first page is noted as the start.
    void note(double X, double W, double S) { _noted = X == 0 && !_frameIsLoaded ? 0 : (X + W / 2) / S; }

private:
    std::optional<double> _toKeep;
    std::optional<double> _noted;
    bool _frameIsLoaded = false;
};

}
