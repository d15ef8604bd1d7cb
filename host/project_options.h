#pragma once

/// The project that a subcommand asks for.

#include "answer.h"
#include "option.h"
#include "settings.h"

/// The options that set a project up as a host would. What they leave open the project's file of
/// settings may say.
class ProjectOptions {
  public:
    void declare(Options& options);
    /// What was given and what the file of settings says.
    Settings in_force() const;
    /// Hands that to gen, and remarks directories that do not exist.
    void apply(Answer& answer) const;

  private:
    std::optional<std::string> m_project;
    std::optional<std::string> m_db;
    std::optional<std::string> m_output;
    std::vector<std::string> m_project_libraries;
    std::vector<std::string> m_user_libraries;
};
