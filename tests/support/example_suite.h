#pragma once

#include "gen_query.h"
#include "temp_directory.h"
#include "test_directories.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

/// gen_query in the example installation. Paths in the answers are shown as if it lay in "/k/".
class ExampleSuite : public testing::Test {
  protected:
    using Arguments = std::vector<std::string>;

    void SetUp() override {
        namespace fs = std::filesystem;
        std::string const suite = TEST_SOURCE_DIR "/../examples/suite/";
        // The current directory is shown by its real path, so that the project has to be a copy.
        fs::copy(suite + "project", m_root / "project", fs::copy_options::recursive);
        for (char const* directory : {"common", "eda", "home", "libraries"})
            fs::create_symlink(suite + directory, m_root / directory);
        fs::copy(suite + "linux", m_root / "linux");
        fs::create_symlink(TEST_BINARY_DIR "/gen_query", executable());
    }

    ProgramResult ask(Arguments const& arguments, std::string const& directory = "project") const {
        ProgramStart start;
        start.arguments = {executable()};
        start.directory = m_root / directory;
        ProgramResult result = run_gen_query(arguments, start);
        for (std::string* text : {&result.output, &result.errors})
            for (std::size_t at = 0; (at = text->find(m_root.path(), at)) != std::string::npos;)
                text->replace(at, m_root.path().size(), "/k");
        return result;
    }

    /// The answer as JSON, to a command line of status 0.
    nlohmann::json json(Arguments arguments) const {
        arguments.emplace_back("--json");
        ProgramResult const result = ask(arguments);
        EXPECT_EQ(result.status, 0) << result.errors;
        return nlohmann::json::parse(result.output);
    }

    /// The command line for the example project with all its groups.
    Arguments everywhere(Arguments arguments) const {
        for (std::string const& option :
             {std::string("--db"), m_root / "project/db", std::string("--project-libs"),
              std::string("lib"), std::string("--user-libs"), m_root / "home/ada/lib"})
            arguments.push_back(option);
        return arguments;
    }

    std::string executable() const { return m_root / "linux/gen_query"; }

    TempDirectory m_root;
};
