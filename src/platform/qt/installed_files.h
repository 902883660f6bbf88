// The files that come with the program: the user's guide and the examples.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <string>

namespace vorn {

// The places where the files that come with a program may lie, the likeliest first: where it was installed
// to, seen from the folder of the program itself, so that an installed tree can be moved; then the folders
// above it, for a program that was built and never installed.
QStringList places_of_installed_files(const QString& program_folder);

// The file or folder of this name ("docs/guide.md") in the first of these places that has it.
std::optional<QString> find_installed(const QString& name, const QStringList& places);

// The same for the program that runs, which has an application object, as a name for the file system; empty
// when there is none.
std::string installed_with_program(const char* name);

}  // namespace vorn
