#include "apps/picture_module.h"

#include <filesystem>
#include <system_error>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif
#ifdef __APPLE__
#include <mach-o/dyld.h>

#include <array>
#endif

namespace vorn {
namespace {

using MakePainter = Painter* (*)();
constexpr const char* maker = "vorn_painter";

#ifdef _WIN32

std::filesystem::path program_folder() {
  std::wstring name(32'768, L'\0');  // no path is longer
  name.resize(GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size())));
  return std::filesystem::path(name).parent_path();
}

MakePainter load(const std::filesystem::path& module, std::string& why) {
  const HMODULE library = LoadLibraryW(module.c_str());
  const FARPROC function = library ? GetProcAddress(library, maker) : nullptr;
  if (!function) why = std::system_category().message(static_cast<int>(GetLastError()));
  return reinterpret_cast<MakePainter>(function);
}

#else

std::filesystem::path program_folder() {
#ifdef __APPLE__
  std::array<char, 4096> name{};
  auto size = static_cast<std::uint32_t>(name.size());
  const std::filesystem::path program = _NSGetExecutablePath(name.data(), &size) == 0 ? name.data() : "";
#else
  const std::filesystem::path program = "/proc/self/exe";
#endif
  std::error_code ignored;
  return std::filesystem::canonical(program, ignored).parent_path();
}

MakePainter load(const std::filesystem::path& module, std::string& why) {
  void* const library = dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL);
  void* const function = library ? dlsym(library, maker) : nullptr;
  if (!function) why = dlerror();
  return reinterpret_cast<MakePainter>(function);
}

#endif

// Where it lies in a tree that was built or, beside no such file, in one that was installed.
std::filesystem::path module_file() {
  const std::filesystem::path folder = program_folder();
  std::filesystem::path built = folder / VORN_PICTURE_MODULE;
  std::error_code ignored;
  if (std::filesystem::exists(built, ignored)) return built;
  return (folder / VORN_MODULES_FROM_PROGRAM / VORN_PICTURE_MODULE).lexically_normal();
}

}  // namespace

std::optional<std::string> PictureModule::paint(const Page& page, PageKind kind, std::string& bytes) {
  if (!painter_) {
    std::string why;
    const MakePainter make = load(module_file(), why);
    if (!make) return "what paints pictures cannot be loaded: " + why;
    painter_.reset(make());
  }
  return painter_->paint(page, kind, bytes);
}

}  // namespace vorn
