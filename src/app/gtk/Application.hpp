#pragma once

#include "app/HomeOpening.hpp"
#include "app/gtk/ReaderModule.hpp"

#include <gtkmm/application.h>

#include <memory>

namespace pagora {

// The application object: one instance, to which later starts pass their files. A start that cannot reach the first
// instance because there is no bus exits immediately. Creates the hub and its environment, and forwards launch, files
// and exit to it. Main thread only.
class Application final : public Gtk::Application {
public:
    // The expected purpose of the start.
    enum class Purpose { Library, Reading };
    static Glib::RefPtr<Application> create(Purpose purpose, std::unique_ptr<HomeOpening> home);
    ~Application() override;

protected:
    void on_startup() override;
    void on_activate() override;
    void on_open(const type_vec_files& files, const Glib::ustring& hint) override;
    void on_shutdown() override;

private:
    struct Parts;

    Application(Purpose purpose, std::unique_ptr<HomeOpening> home);
    // Shows the first window and ends the launch.
    void finishLaunching();
    void endOnSignal(int number);

    Purpose _purpose;
    std::unique_ptr<HomeOpening> _home;
    ReaderModule _reader;
    // Null if another instance has locked the home folder.
    std::unique_ptr<Parts> _parts;
    bool _launched = false;
};

}
