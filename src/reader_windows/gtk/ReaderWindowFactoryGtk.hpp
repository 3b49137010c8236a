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
    // Books are unpacked below `temporaryFolder`, and the engine stores compiled filters there. The windows share
    // `toplevel`, which must outlive them, as must the run loop.
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
    // The prepared layout of the next window, if any. It is for a reflowable book, the most common kind.
    std::unique_ptr<ReaderLayout> _nextLayout;
};

}
