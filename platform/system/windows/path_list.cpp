#include "platform/system/path_list.h"

#include "platform/system/windows/windows_file.h"

namespace blockhouse {
namespace {

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

} // namespace

std::string pathListFrom(std::string fileBytes) {
    if (fileBytes.starts_with(utf8Mark))
        return fileBytes.substr(utf8Mark.size());
    const auto convert = [&fileBytes](wchar_t* room, int size) {
        return ::MultiByteToWideChar(CP_ACP, 0, fileBytes.data(), static_cast<int>(fileBytes.size()), room, size);
    };
    std::wstring wide(static_cast<std::size_t>(convert(nullptr, 0)), L'\0');
    convert(wide.data(), static_cast<int>(wide.size()));
    return narrowText(wide);
}

std::string fileBytesOf(std::string pathList) {
    const std::wstring wide = wideText(pathList);
    const auto convert = [&wide](char* room, int size) {
        return ::WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide.data(), static_cast<int>(wide.size()), room,
                                     size, nullptr, nullptr);
    };
    std::string bytes(static_cast<std::size_t>(convert(nullptr, 0)), '\0');
    convert(bytes.data(), static_cast<int>(bytes.size()));
    // What the encoding lacks comes back as something else; so does a list that would be taken for UTF-8.
    return pathListFrom(bytes) == pathList ? bytes : std::string(utf8Mark) + pathList;
}

} // namespace blockhouse
