#pragma once

/// Private to gen.

/// Makes the current directory the project directory when none is set. In gen_path_project.cpp.
void gen_default_project_directory();
