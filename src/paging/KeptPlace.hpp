#pragma once

#include <optional>

namespace pagora {

// The place of a chapter that is kept in the middle of the page when late pictures or fonts change the layout. Places
// are fractions of the chapter.
class KeptPlace {
public:
    // The place to keep until the user navigates; missing for none.
    const std::optional<double>& toKeep() const { return _toKeep; }
    void setToKeep(std::optional<double> place) { _toKeep = place; }
    // Keeps the place that is shown.
    void keepLast() { _toKeep = last(); }
    void userMoves() { _toKeep = std::nullopt; }

    // The place to keep, otherwise the one noted last; missing while there is neither.
    std::optional<double> last() const { return _toKeep ? _toKeep : _noted; }
    void chapterChanges() { _noted = 0; }
    // Whether all resources of the chapter have arrived or failed.
    void setFrameIsLoaded(bool isLoaded) { _frameIsLoaded = isLoaded; }
    // Notes the place of the page at offset X of a chapter of S points in a view of W points. While pictures are still
    // loading, which lengthens the chapter, the first page counts as the start.
    void note(double X, double W, double S) { _noted = X == 0 && !_frameIsLoaded ? 0 : (X + W / 2) / S; }

private:
    std::optional<double> _toKeep;
    std::optional<double> _noted;
    bool _frameIsLoaded = false;
};

}
