#include "records/memory_files.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace vorn {
namespace {

namespace fs = std::filesystem;

// One spelling for each path: "./a", "b/../a" and "a" are the same file.
std::string plain(const std::string& name) {
  std::string path = fs::path(name).lexically_normal().generic_string();
  if (path.size() > 1 && path.ends_with('/')) path.pop_back();
  return path == "." ? std::string() : path;
}

std::string folder_of(const std::string& path) {
  return fs::path(path).parent_path().generic_string();
}

}  // namespace

class MemoryFiles::Source : public ByteSource {
 public:
  explicit Source(Contents contents) : contents_(std::move(contents)), rest_(*contents_) {}
  Status read(std::span<char> buffer, std::size_t& count) override {
    count = rest_.copy(buffer.data(), buffer.size());
    rest_.remove_prefix(count);
    return status::ok;
  }
  std::uint64_t expected_size() const override { return contents_->size(); }
  Status close() override { return status::ok; }

 private:
  Contents contents_;
  std::string_view rest_;
};

class MemoryFiles::Sink : public ByteSink {
 public:
  Sink(MemoryFiles& files, std::string path, Contents older)
      : files_(files), path_(std::move(path)), older_(std::move(older)) {}
  Status write(std::string_view bytes) override {
    made_ += bytes;
    return status::ok;
  }
  Status commit() override {
    auto kind = FileKind::missing;
    if (const Status failed = files_.find(path_, kind)) return failed;
    if (kind == FileKind::folder) return status::a_folder;
    if (older_ && kind == FileKind::missing) return status::no_such_file;
    auto& there = files_.files_[path_];
    if (older_ && there != older_) return status::busy;
    there = std::make_shared<const std::string>(std::move(made_));
    return status::ok;
  }

 private:
  MemoryFiles& files_;
  std::string path_, made_;
  Contents older_;  // that is added to; nothing for a new file
};

void MemoryFiles::put(const std::string& name, std::string contents) {
  const std::string path = plain(name);
  make_folder(folder_of(path));
  files_[path] = std::make_shared<const std::string>(std::move(contents));
}

void MemoryFiles::make_folder(const std::string& name) {
  for (std::string path = plain(name); !path.empty() && folders_.insert(path).second;) path = folder_of(path);
}

void MemoryFiles::refuse(const std::string& name, Status failure) {
  refused_[plain(name)] = failure;
}

std::optional<std::string_view> MemoryFiles::contents(const std::string& name) const {
  const auto file = files_.find(plain(name));
  if (file == files_.end()) return std::nullopt;
  return *file->second;
}

Status MemoryFiles::find(const std::string& path, FileKind& kind) const {
  kind = FileKind::missing;
  const auto refused = refused_.find(path);
  if (refused != refused_.end()) return refused->second;
  if (files_.contains(path)) kind = FileKind::regular;
  if (path.empty() || folders_.contains(path)) kind = FileKind::folder;
  return status::ok;
}

Status MemoryFiles::look_at(const std::string& name, FileKind& kind) {
  return find(plain(name), kind);
}

Status MemoryFiles::open(const std::string& name, std::unique_ptr<ByteSource>& source) {
  auto kind = FileKind::missing;
  if (const Status failed = look_at(name, kind)) return failed;
  if (kind == FileKind::folder) return status::a_folder;
  if (kind == FileKind::missing) return status::no_such_file;
  source = std::make_unique<Source>(files_.at(plain(name)));
  return status::ok;
}

Status MemoryFiles::make(const std::string& name, std::unique_ptr<ByteSink>& sink) {
  const std::string path = plain(name);
  auto kind = FileKind::missing, around = FileKind::missing;
  if (const Status failed = find(path, kind)) return failed;
  if (kind == FileKind::folder) return status::a_folder;
  if (const Status failed = find(folder_of(path), around)) return failed;
  if (around != FileKind::folder)
    return around == FileKind::missing ? status::no_such_file : status::no_folder;
  sink = std::make_unique<Sink>(*this, path, nullptr);
  return status::ok;
}

Status MemoryFiles::extend(const std::string& name, std::unique_ptr<ByteSource>& older,
                           std::unique_ptr<ByteSink>& sink) {
  if (const Status failed = open(name, older)) return failed;
  const std::string path = plain(name);
  sink = std::make_unique<Sink>(*this, path, files_.at(path));
  return status::ok;
}

}  // namespace vorn
