#pragma once

#include <chrono>
#include <string>

namespace morvelle {

/// The day as file names have it, local time, in every locale: ddmmyy.
std::string ShortDate(std::chrono::system_clock::time_point now);
/// ddmmyyyy.
std::string LongDate(std::chrono::system_clock::time_point now);
/// Day and time in a form that every file system takes and that sorts by age: yyyy-mm-dd hh-mm-ss.
std::string DateAndTime(std::chrono::system_clock::time_point now);

}  // namespace morvelle
