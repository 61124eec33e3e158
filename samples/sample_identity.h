#pragma once

#include <map>
#include <string>

namespace morvelle {

/// The identity that the program opens where there is none: who starts it for the first time finds
/// rules, folders and an address book of a believable user. Path below the sample's folder (UTF-8,
/// "/" between components), then the file's bytes.
std::map<std::string, std::string> SampleIdentityFiles();

}  // namespace morvelle
