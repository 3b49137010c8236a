#pragma once

#include "store/HomeLock.hpp"

#include <gtkmm/application.h>

#include <memory>
#include <string>
#include <vector>

namespace pagora {

// The application object: one instance, to which later starts pass their files. A start that cannot reach the first
// instance, without a bus, exits at once. Creates the hub and its environment, and passes launch, files and exit on.
// Main thread.
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
