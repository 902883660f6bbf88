// How a session stands, as the page around it is told.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "desk/status_line.h"
#include "sessions/deeds.h"
#include "sessions/standing.h"

namespace vorn {

// What does not change: the actions of the menus, the page of keys, the colours, the panels.
nlohmann::ordered_json hello_fields(std::string_view program_version);

// All of a standing but its situation, with how each action stands.
nlohmann::ordered_json standing_fields(const Standing& standing);

nlohmann::ordered_json status_fields(const StatusLine& line);

// A play that goes to the page and comes back as it was. What is damaged gives nothing.
nlohmann::ordered_json fields_of(const Play& play);
std::optional<Play> play_of(const nlohmann::ordered_json& fields);

}  // namespace vorn
