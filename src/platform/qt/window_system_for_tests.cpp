#include "platform/qt/window_system_for_tests.h"

#include <gtest/gtest.h>

#include <array>
#include <clocale>
#include <filesystem>
#include <memory>
#include <string>

namespace vorn {
namespace {

// What the window system needs while the tests run: a folder that only this user may enter, and the
// application.
class WindowSystem : public testing::Environment {
 public:
  WindowSystem() = default;
  WindowSystem(const WindowSystem&) = delete;
  WindowSystem& operator=(const WindowSystem&) = delete;
  void TearDown() override { application_.reset(); }
  // Not in TearDown, which a test that ends its process does not reach.
  ~WindowSystem() override {
    std::error_code ignored;
    if (!folder_.empty()) std::filesystem::remove_all(folder_, ignored);
  }
  void prepare() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (!folder_.empty()) return;
    std::string pattern = (std::filesystem::temp_directory_path() / "vorn-runtime-XXXXXX").string();
    folder_ = mkdtemp(pattern.data());
    qputenv("XDG_RUNTIME_DIR", QByteArray::fromStdString(folder_.string()));
    // Settings and documents of whoever runs the tests are left alone.
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(folder_.string()));
    qputenv("HOME", QByteArray::fromStdString(folder_.string()));
  }
  QApplication& application() {
    prepare();
    if (!application_) application_ = std::make_unique<QApplication>(argument_count_, arguments_.data());
    std::setlocale(LC_NUMERIC, "C");
    return *application_;
  }

 private:
  std::filesystem::path folder_;
  int argument_count_ = 1;
  std::string name_ = "platform_test";
  std::array<char*, 2> arguments_ = {name_.data(), nullptr};
  std::unique_ptr<QApplication> application_;
};

WindowSystem* const window_system = [] {
  auto* const made = new WindowSystem;  // the test library owns it
  testing::AddGlobalTestEnvironment(made);
  return made;
}();

}  // namespace

void prepare_offscreen() {
  window_system->prepare();
}

QApplication& application_for_tests() {
  return window_system->application();
}

}  // namespace vorn
