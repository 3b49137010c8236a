#include "desktop/gtk/GraphicsCard.hpp"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <cstdlib>
#include <dlfcn.h>
#include <string_view>

namespace pagora {

namespace {

using GetString = const unsigned char* (*)(unsigned);
constexpr unsigned glRenderer = 0x1F01;

// Loads EGL at run time, because nothing else needs it.
class Egl {
public:
    Egl()
        : _library(dlopen("libEGL.so.1", RTLD_NOW | RTLD_LOCAL))
    {
        if (_library)
            _address = reinterpret_cast<decltype(_address)>(dlsym(_library, "eglGetProcAddress"));
    }
    // Returns null if the function is missing.
    template <typename Function>
    Function find(const char* name) const
    {
        if (!_library)
            return nullptr;
        void* function = dlsym(_library, name);
        if (!function && _address)
            function = reinterpret_cast<void*>(_address(name));
        return reinterpret_cast<Function>(function);
    }

private:
    void* _library;
    PFNEGLGETPROCADDRESSPROC _address = nullptr;
};

// GTK tries Wayland first unless it is configured otherwise.
EGLenum platformOfDisplay()
{
    const char* const backend = std::getenv("GDK_BACKEND");
    const char* const wayland = std::getenv("WAYLAND_DISPLAY");
    const bool isToldX11 = backend && std::string_view(backend).starts_with("x11");
    return wayland && *wayland && !isToldX11 ? EGL_PLATFORM_WAYLAND_EXT : EGL_PLATFORM_X11_EXT;
}

}

std::string GraphicsCard::rendererOfDisplay()
{
    const Egl egl;
    const auto getDisplay = egl.find<PFNEGLGETPLATFORMDISPLAYEXTPROC>("eglGetPlatformDisplayEXT");
    const auto initialize = egl.find<PFNEGLINITIALIZEPROC>("eglInitialize");
    const auto bindApi = egl.find<PFNEGLBINDAPIPROC>("eglBindAPI");
    const auto createContext = egl.find<PFNEGLCREATECONTEXTPROC>("eglCreateContext");
    const auto makeCurrent = egl.find<PFNEGLMAKECURRENTPROC>("eglMakeCurrent");
    const auto getString = egl.find<GetString>("glGetString");
    if (!getDisplay || !initialize || !bindApi || !createContext || !makeCurrent || !getString)
        return {};
    EGLDisplay display = getDisplay(platformOfDisplay(), EGL_DEFAULT_DISPLAY, nullptr);
    if (!display || !initialize(display, nullptr, nullptr))
        return {};
    for (const EGLenum api : { EGL_OPENGL_API, EGL_OPENGL_ES_API }) {
        const EGLint version[] = { EGL_CONTEXT_MAJOR_VERSION, api == EGL_OPENGL_API ? 3 : 2, EGL_NONE };
        if (!bindApi(api))
            continue;
        EGLContext context = createContext(display, EGL_NO_CONFIG_KHR, EGL_NO_CONTEXT, version);
        if (context == EGL_NO_CONTEXT || !makeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context))
            continue;
        const auto* const name = getString(glRenderer);
        return name ? reinterpret_cast<const char*>(name) : "";
    }
    return {};
}

}
