// The folder to work in, for a program that is started from a desktop, where nobody says which.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace vorn {

// Asks for the folder to work in, until there is one that holds a Vorn.fil: the folder of the session before,
// any other, or a copy of the examples in the user's documents. For a folder that has ring-width files but no
// Vorn.fil it offers to write one. `data_places` are the places of the files that come with the program.
// Needs the application object. Returns nothing when the user does not want any.
std::optional<QString> choose_folder(const QStringList& data_places);

// Offers this folder first, the next time.
void remember_folder(const QString& folder);

// A copy of the folder `examples` at `copy`, to be worked on. A copy that is already there stays as it is.
// Returns what went wrong.
std::optional<QString> copy_examples(const QString& examples, const QString& copy);

// The names of the files in a folder that look like ring widths and, behind them, those that look like
// chronologies, by their endings; as many as a list takes.
QStringList names_for_list(const QString& folder);

// Writes these names to Vorn.fil in the folder. Returns what went wrong.
std::optional<QString> write_list(const QString& folder, const QStringList& names);

}  // namespace vorn
