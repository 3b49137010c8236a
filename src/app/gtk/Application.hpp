#pragma once

#include "app/gtk/ReaderModule.hpp"
#include "store/HomeLock.hpp"

#include <gtkmm/application.h>

#include <memory>

namespace pagora {

// The application object: one instance, to which later starts pass their files. A start that cannot reach the first
// instance, without a bus, exits at once. Creates the hub and its environment, and passes launch, files and exit on.
// Main thread only.
class Application final : public Gtk::Application {
public:
    // What it is started for, as far as that is known.
    enum class Purpose { Library, Reading };
    static Glib::RefPtr<Application> create(Purpose purpose);
    ~Application() override;

protected:
    void on_startup() override;
    void on_activate() override;
    void on_open(const type_vec_files& files, const Glib::ustring& hint) override;
    void on_shutdown() override;

private:
    struct Parts;

    explicit Application(Purpose purpose);
    // The first window, and the end of the launch.
    void finishLaunching();
    void endOnSignal(int number);

    Purpose _purpose;
    HomeLock _home;
    ReaderModule _reader;
    // None when another instance has the home folder.
    std::unique_ptr<Parts> _parts;
    bool _launched = false;
};

}
