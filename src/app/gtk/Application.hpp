#pragma once

#include "store/HomeLock.hpp"

#include <gtkmm/application.h>

#include <memory>
#include <string>
#include <vector>

namespace pagora {

// The program as the desktop sees it: one instance, which later starts hand their files to; one that cannot reach the
// first, for want of a bus, ends at once. It builds the hub and what
// the hub stands on, and tells it of the launch, the files and the end. Main thread.
class Application final : public Gtk::Application {
public:
    static Glib::RefPtr<Application> create();
    ~Application() override;

protected:
    void on_startup() override;
    void on_activate() override;
    void on_open(const type_vec_files& files, const Glib::ustring& hint) override;
    void on_shutdown() override;

private:
    struct Parts;

    Application();
    // The first window, and the end of the launch.
    void finishLaunching();
    void endOnSignal(int number);

    HomeLock _home;
    // None when another instance has the home folder.
    std::unique_ptr<Parts> _parts;
    bool _launched = false;
};

}
