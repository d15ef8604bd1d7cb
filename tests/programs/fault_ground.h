#pragma once

/// Where fault_probe stands: an empty directory made into an installation and a project.

#include "fio.h"

#include <string>

/// Makes @p directory an installation, a project with a file, and a place to stand.
void prepare_ground(char const* directory);

/// Internal errors reported since then.
int reports();

/// A path below the directory.
std::string at(char const* relative);
STR text_at(char const* relative);
/// A path there that nothing has yet.
STR fresh(char const* name);

std::string shown(STR const& text);
std::string shown(bool yes);
std::string shown(FIO_PATH const& path);
/// Text of the machine or the moment.
std::string known(STR const& text);

void write(std::string const& file, std::string const& content = "");
std::string content(std::string const& file);
/// Whether a file has all of it, its beginning, or nothing of it.
std::string compared(std::string const& file, std::string const& whole);
