#include "pictures/PictureProcess.hpp"

#include "base/FileDescriptor.hpp"
#include "confinement/HelperProcess.hpp"
#include "files/Files.hpp"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>

namespace pagora {

namespace {

constexpr PictureProcessLimits limits;
constexpr const char* programName = "pagora-picture";

// Precedes the pixels, which follow row by row without padding.
struct Header {
    double ownWidth, ownHeight;
    std::int32_t width, height;
    std::int32_t hasAlpha;
    std::int32_t unused;
};

FileDescriptor memoryFile(const char* name)
{
    return FileDescriptor(::memfd_create(name, MFD_CLOEXEC));
}

// Runs the helper. Returns whether it exited successfully.
bool run(const FileDescriptor& input, const FileDescriptor& output, Size enough)
{
    posix_spawn_file_actions_t files;
    if (::posix_spawn_file_actions_init(&files) != 0)
        return false;
    const auto path = helperPath(programName);
    auto width = std::to_string(static_cast<int>(enough.width));
    auto height = std::to_string(static_cast<int>(enough.height));
    char name[] = "pagora-picture";
    char* const arguments[] = { name, width.data(), height.data(), nullptr };
    pid_t process = 0;
    const bool started = ::posix_spawn_file_actions_adddup2(&files, input.get(), STDIN_FILENO) == 0
        && ::posix_spawn_file_actions_adddup2(&files, output.get(), STDOUT_FILENO) == 0
        && ::posix_spawn_file_actions_addopen(&files, STDERR_FILENO, "/dev/null", O_WRONLY, 0) == 0
        && ::posix_spawn(&process, path.c_str(), &files, nullptr, arguments, environ) == 0;
    ::posix_spawn_file_actions_destroy(&files);
    if (!started)
        return false;
    int status = 0;
    pid_t ended = 0;
    do
        ended = ::waitpid(process, &status, 0);
    while (ended < 0 && errno == EINTR);
    return ended == process && WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS;
}

std::optional<std::string> readAll(int file)
{
    return readFile("/proc/self/fd/" + std::to_string(file), PictureLimits().pixels * 4 + sizeof(Header));
}

std::optional<DecodedPicture> pictureFrom(const std::string& result)
{
    Header header {};
    if (result.size() < sizeof header)
        return std::nullopt;
    std::memcpy(&header, result.data(), sizeof header);
    const std::int64_t channels = header.hasAlpha ? 4 : 3;
    if (header.width < 1 || header.height < 1 || !(header.ownWidth >= 1) || !(header.ownHeight >= 1)
        || static_cast<std::int64_t>(header.width) * header.height > PictureLimits().pixels
        || result.size() - sizeof header != static_cast<std::size_t>(channels * header.width * header.height))
        return std::nullopt;
    auto* bytes = g_bytes_new(result.data() + sizeof header, result.size() - sizeof header);
    const std::shared_ptr<GdkPixbuf> pixbuf(
        gdk_pixbuf_new_from_bytes(bytes, GDK_COLORSPACE_RGB, header.hasAlpha != 0, 8, header.width, header.height,
            static_cast<int>(channels * header.width)),
        &g_object_unref);
    g_bytes_unref(bytes);
    return DecodedPicture { pixbuf, { header.ownWidth, header.ownHeight } };
}

void limit(int resource, rlim_t most)
{
    const rlimit both { most, most };
    ::setrlimit(static_cast<__rlimit_resource>(resource), &both);
}

void limitAll()
{
    // The kernel kills the helper when the process that waits for it ends.
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    limit(RLIMIT_CORE, 0);
    limit(RLIMIT_CPU, limits.seconds);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    // Sanitizers reserve far more address space than they use.
    limit(RLIMIT_DATA, rlim_t { limits.megabytes } << 20);
#endif
}

}

std::optional<DecodedPicture> decodePictureInHelper(const std::string& bytes, Size enough)
{
    const auto input = memoryFile("picture");
    const auto output = memoryFile("pixels");
    if (!input || !output || !writeAll(input.get(), bytes) || ::lseek(input.get(), 0, SEEK_SET) != 0
        || !run(input, output, enough))
        return std::nullopt;
    const auto result = readAll(output.get());
    return result ? pictureFrom(*result) : std::nullopt;
}

int runPictureHelper(int count, char** arguments)
{
    limitAll();
    if (count != 3)
        return EXIT_FAILURE;
    const auto bytes = readFile("/proc/self/fd/" + std::to_string(STDIN_FILENO), PictureLimits().fileBytes);
    const auto picture = bytes
        ? decodePicture(*bytes, { std::strtod(arguments[1], nullptr), std::strtod(arguments[2], nullptr) })
        : std::nullopt;
    if (!picture)
        return EXIT_FAILURE;
    auto* const pixbuf = picture->pixbuf.get();
    const auto rowBytes = std::size_t(gdk_pixbuf_get_width(pixbuf)) * std::size_t(gdk_pixbuf_get_n_channels(pixbuf));
    const Header header { picture->size.width, picture->size.height, gdk_pixbuf_get_width(pixbuf),
        gdk_pixbuf_get_height(pixbuf), gdk_pixbuf_get_has_alpha(pixbuf) ? 1 : 0, 0 };
    bool written = writeAll(STDOUT_FILENO, { reinterpret_cast<const char*>(&header), sizeof header });
    const auto* row = reinterpret_cast<const char*>(gdk_pixbuf_read_pixels(pixbuf));
    for (int i = 0; written && i < header.height; ++i, row += gdk_pixbuf_get_rowstride(pixbuf))
        written = writeAll(STDOUT_FILENO, { row, rowBytes });
    return written ? EXIT_SUCCESS : EXIT_FAILURE;
}

}
