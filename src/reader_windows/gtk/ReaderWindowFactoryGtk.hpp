#pragma once

#include "confinement/Confinement.hpp"
#include "reader/EpubWindow.hpp"

#include <memory>
#include <sigc++/connection.h>
#include <string>

namespace pagora {

class PageEngine;
class PageView;
enum class PageKind;
class ReaderLayout;
class RunLoop;
class Toplevel;
struct ReaderPage;

// Creates reader windows, each with a page view. The engine starts with the first window or when it is prepared.
// Without confinement, books are shown without their own scripts. Main thread only.
class ReaderWindowFactoryGtk : public ReaderWindowFactory {
public:
    // Books are unpacked below `temporaryFolder`, and the engine compiles there too. The windows share the toplevel,
    // which outlives them, as the run loop does.
    ReaderWindowFactoryGtk(std::string temporaryFolder, Toplevel& toplevel, RunLoop& runLoop);
    ~ReaderWindowFactoryGtk() override;

    std::unique_ptr<EpubWindow> makeEpubWindow() override;
    std::unique_ptr<FixedWindow> makeFixedWindow() override;
    void prepareNextWindow() override;

private:
    PageEngine& engine();
    ReaderPage makePage(PageKind kind, const PageView* beside = nullptr);
    void prepareWhenProbed();

    std::string _temporaryFolder;
    Toplevel& _toplevel;
    RunLoop& _runLoop;
    ConfinementProbe _probe;
    std::unique_ptr<PageEngine> _engine;
    sigc::connection _preparation;
    // Of the next window, where one is prepared: of the kind that most books have.
    std::unique_ptr<ReaderLayout> _nextLayout;
};

}
