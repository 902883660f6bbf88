#include "import/archive_parts.h"

#include <algorithm>

#include "import/zip_library.h"

namespace vorn {

struct ArchiveParts::Archive {
  const ZipLibrary* library = zip_library();
  zip_t* zip = nullptr;
  Archive() = default;
  Archive(const Archive&) = delete;
  Archive& operator=(const Archive&) = delete;
  ~Archive() {
    if (zip) library->discard(zip);
  }
};

namespace {

std::string megabytes(std::size_t bytes) {
  return std::to_string(bytes >> 20U) + " MB";
}

// Closes it at the end.
class OpenPart {
 public:
  OpenPart(const ZipLibrary& library, zip_t* zip, zip_uint64_t index)
      : library_(library), file_(library.fopen_index(zip, index, 0)) {}
  ~OpenPart() {
    if (file_) library_.fclose(file_);
  }
  OpenPart(const OpenPart&) = delete;
  OpenPart& operator=(const OpenPart&) = delete;
  // Whether all of it was read, which is `text` long.
  bool fills(std::string& text) {
    std::size_t filled = 0;
    while (file_ && filled < text.size()) {
      const zip_int64_t count = library_.fread(file_, text.data() + filled, text.size() - filled);
      if (count <= 0) return false;
      filled += static_cast<std::size_t>(count);
    }
    char more = 0;
    return file_ && library_.fread(file_, &more, 1) == 0;  // where its sum is held against the bytes
  }

 private:
  const ZipLibrary& library_;
  zip_file_t* file_;
};

}  // namespace

ArchiveParts::ArchiveParts(std::string_view bytes) : archive_(std::make_unique<Archive>()) {
  const ZipLibrary* const library = archive_->library;
  if (!library) {
    failure_ = "libzip, which reads archives, is not installed";
    return;
  }
  zip_source_t* source = library->source_buffer_create(bytes.data(), bytes.size(), 0, nullptr);
  archive_->zip = source ? library->open_from_source(source, ZIP_RDONLY, nullptr) : nullptr;
  if (!archive_->zip) {
    if (source) library->source_free(source);
    failure_ = "the archive is damaged or cut short";
    return;
  }
  const auto parts = library->get_num_entries(archive_->zip, 0);
  if (parts > static_cast<zip_int64_t>(most_archive_parts))
    failure_ = "the archive has " + std::to_string(parts) + " parts, more than " +
               std::to_string(most_archive_parts);
}

ArchiveParts::~ArchiveParts() = default;

std::int64_t ArchiveParts::place_of(std::string name) const {
  if (!archive_->zip) return -1;
  const auto place = [&] {
    return archive_->library->name_locate(archive_->zip, name.c_str(), ZIP_FL_NOCASE);
  };
  if (const std::int64_t found = place(); found >= 0) return found;
  std::ranges::replace(name, '/', '\\');  // as some programs of Windows part them
  return place();
}

bool ArchiveParts::has(const std::string& name) const {
  return place_of(name) >= 0;
}

bool ArchiveParts::is_within_bounds(const std::string& name, unsigned long long unpacked,
                                    unsigned long long packed) {
  if (unpacked > most_part_bytes)
    failure_ = "its part " + name + " would be larger than " + megabytes(most_part_bytes);
  else if (unpacked > (1U << 20U) && unpacked / most_times_packed > packed)
    failure_ = "its part " + name + " would unpack to more than " + std::to_string(most_times_packed) +
               " times its size";
  else if (unpacked_ + unpacked > most_unpacked_bytes)
    failure_ = "its parts would be larger than " + megabytes(most_unpacked_bytes) + " together";
  return failure_.empty();
}

std::optional<std::string> ArchiveParts::read(const std::string& name) {
  if (!has(name) || !failure_.empty()) return std::nullopt;
  const ZipLibrary& library = *archive_->library;
  const auto index = static_cast<zip_uint64_t>(place_of(name));
  zip_stat_t stat;
  constexpr zip_uint64_t needed = ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE;
  if (library.stat_index(archive_->zip, index, 0, &stat) != 0 || (stat.valid & needed) != needed) {
    failure_ = "its part " + name + " is damaged";
    return std::nullopt;
  }
  if (!is_within_bounds(name, stat.size, stat.comp_size)) return std::nullopt;
  std::string text(stat.size, '\0');
  if (!OpenPart(library, archive_->zip, index).fills(text)) {
    failure_ = "its part " + name + " is damaged, or has a password";
    return std::nullopt;
  }
  unpacked_ += text.size();
  return text;
}

}  // namespace vorn
