// The minimum work of an import: floor_import [--threads NUMBER] FOLDER DESTINATION copies each archive of FOLDER,
// reads the members that an import reads, and makes the small cover. One thread unless told otherwise, no checks.
// Prints the time in seconds.

#include <zip.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <iostream>
#include <jpeglib.h>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

constexpr int boxWidth = 106;
constexpr int boxHeight = 156;
constexpr int quality = 80;

std::string read(zip_t* archive, const std::string& name)
{
    zip_stat_t info;
    zip_stat(archive, name.c_str(), 0, &info);
    std::string bytes(info.size, '\0');
    auto* file = zip_fopen(archive, name.c_str(), 0);
    zip_fread(file, bytes.data(), bytes.size());
    zip_fclose(file);
    return bytes;
}

// Returns the value of the first attribute of that name after `from`.
std::string attribute(const std::string& text, const std::string& name, std::size_t from)
{
    const auto start = text.find(name + "=\"", from) + name.size() + 2;
    return text.substr(start, text.find('"', start) - start);
}

struct Picture {
    int width;
    int height;
    std::vector<unsigned char> pixels;
};

Picture decoded(const std::string& bytes)
{
    jpeg_decompress_struct jpeg;
    jpeg_error_mgr errors;
    jpeg.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&jpeg);
    jpeg_mem_src(&jpeg, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
    jpeg_read_header(&jpeg, TRUE);
    jpeg.scale_num = 1;
    jpeg.scale_denom = 8;
    jpeg_start_decompress(&jpeg);
    Picture picture { static_cast<int>(jpeg.output_width), static_cast<int>(jpeg.output_height), {} };
    picture.pixels.resize(static_cast<std::size_t>(picture.width) * picture.height * 3);
    while (jpeg.output_scanline < jpeg.output_height) {
        JSAMPROW row = picture.pixels.data() + static_cast<std::size_t>(jpeg.output_scanline) * picture.width * 3;
        jpeg_read_scanlines(&jpeg, &row, 1);
    }
    jpeg_finish_decompress(&jpeg);
    jpeg_destroy_decompress(&jpeg);
    return picture;
}

Picture scaled(const Picture& source)
{
    const double factor
        = std::min(boxWidth / static_cast<double>(source.width), boxHeight / static_cast<double>(source.height));
    Picture target { static_cast<int>(source.width * factor), static_cast<int>(source.height * factor), {} };
    target.pixels.resize(static_cast<std::size_t>(target.width) * target.height * 3);
    auto* pixel = target.pixels.data();
    for (int y = 0; y < target.height; ++y) {
        const float v = std::min(static_cast<float>(y / factor), static_cast<float>(source.height - 2));
        const int top = static_cast<int>(v);
        for (int x = 0; x < target.width; ++x) {
            const float u = std::min(static_cast<float>(x / factor), static_cast<float>(source.width - 2));
            const int left = static_cast<int>(u);
            const auto* corner = source.pixels.data() + (static_cast<std::size_t>(top) * source.width + left) * 3;
            const auto* below = corner + static_cast<std::size_t>(source.width) * 3;
            const float a = u - static_cast<float>(left);
            const float b = v - static_cast<float>(top);
            for (int c = 0; c < 3; ++c)
                *pixel++ = static_cast<unsigned char>(
                    (corner[c] * (1 - a) + corner[c + 3] * a) * (1 - b) + (below[c] * (1 - a) + below[c + 3] * a) * b);
        }
    }
    return target;
}

std::size_t encodedSize(Picture picture)
{
    jpeg_compress_struct jpeg;
    jpeg_error_mgr errors;
    jpeg.err = jpeg_std_error(&errors);
    jpeg_create_compress(&jpeg);
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&jpeg, &bytes, &size);
    jpeg.image_width = static_cast<JDIMENSION>(picture.width);
    jpeg.image_height = static_cast<JDIMENSION>(picture.height);
    jpeg.input_components = 3;
    jpeg.in_color_space = JCS_RGB;
    jpeg_set_defaults(&jpeg);
    jpeg_set_quality(&jpeg, quality, TRUE);
    jpeg_start_compress(&jpeg, TRUE);
    while (jpeg.next_scanline < jpeg.image_height) {
        JSAMPROW row = picture.pixels.data() + static_cast<std::size_t>(jpeg.next_scanline) * picture.width * 3;
        jpeg_write_scanlines(&jpeg, &row, 1);
    }
    jpeg_finish_compress(&jpeg);
    jpeg_destroy_compress(&jpeg);
    std::free(bytes);
    return size;
}

void copy(const std::string& from, const std::string& to)
{
    const int source = ::open(from.c_str(), O_RDONLY | O_CLOEXEC);
    const int target = ::open(to.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    while (::copy_file_range(source, nullptr, target, nullptr, 1u << 30, 0) > 0) { }
    ::close(target);
    ::close(source);
}

std::size_t import(const std::string& file, const std::string& destination)
{
    copy(file, destination + "/" + file.substr(file.rfind('/') + 1));
    auto* archive = zip_open(file.c_str(), ZIP_RDONLY, nullptr);
    auto size = read(archive, "mimetype").size();
    const auto packagePath = attribute(read(archive, "META-INF/container.xml"), "full-path", 0);
    const auto folder = packagePath.substr(0, packagePath.rfind('/') + 1);
    const auto package = read(archive, packagePath);
    size += read(archive, folder + attribute(package, "href", package.find("id=\"ncx\""))).size();
    const auto cover = read(archive, folder + attribute(package, "href", package.find("id=\"cover\"")));
    size += encodedSize(scaled(decoded(cover)));
    zip_discard(archive);
    return size;
}

}

int main(int count, char** arguments)
{
    std::size_t threads = 1;
    if (count == 5 && std::string(arguments[1]) == "--threads") {
        threads = std::strtoul(arguments[2], nullptr, 10);
        arguments += 2;
        count -= 2;
    }
    if (count != 3 || threads == 0)
        return 2;
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(arguments[1]))
        files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    std::filesystem::create_directories(arguments[2]);
    const auto start = std::chrono::steady_clock::now();
    std::atomic<std::size_t> next = 0;
    std::atomic<std::size_t> size = 0;
    {
        std::vector<std::jthread> running;
        for (std::size_t i = 0; i < threads; ++i)
            running.emplace_back([&] {
                for (std::size_t number = next++; number < files.size(); number = next++)
                    size += import(files[number], arguments[2]);
            });
    }
    std::cout << std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() << "\n";
    return size > 0 ? 0 : 1;
}
