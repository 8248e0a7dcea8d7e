// The command-line tool, run as its users run it, and inputs for it: made by hand, or at test time
// by the openssl command-line tool, which is also the judge of what they say.
#ifndef ORVELASN1_TESTS_TOOL_TOOL_H
#define ORVELASN1_TESTS_TOOL_TOOL_H

#include <fcntl.h>
#include <gtest/gtest.h>
#include <regex.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "support.h"

namespace tool_tests {

using nlohmann::json;
using support::Bytes;
using support::element;
using support::hex;
using support::operator+;

/// What a program did.
struct Outcome {
  int status;  ///< its exit status, or 128 and the number of the signal that ended it
  std::string out;
  std::string err;
};

inline std::string read_file(const std::string &path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

inline void write_file(const std::string &path, const std::string &content) {
  std::ofstream(path, std::ios::binary) << content;
}

/// Whether an extended regular expression of POSIX matches.
inline bool matches(const std::string &text, const std::string &pattern) {
  regex_t expression;
  if (regcomp(&expression, pattern.c_str(), REG_EXTENDED | REG_NOSUB) != 0) return false;
  const bool matched = regexec(&expression, text.c_str(), 0, nullptr, 0) == 0;
  regfree(&expression);
  return matched;
}

inline std::string characters(const Bytes &octets) { return {octets.begin(), octets.end()}; }

/// A temporary folder, and programs run with their streams in files of it.
class Tool : public testing::Test {
 protected:
  Tool() {
    std::string pattern = testing::TempDir() + "orvelasn1_tool_XXXXXX";
    folder_ = mkdtemp(pattern.data());
  }
  ~Tool() override { std::filesystem::remove_all(folder_); }

  std::string path(const std::string &name) const { return folder_ + "/" + name; }

  /// Writes a file into the folder and returns its path.
  std::string file(const std::string &name, const std::string &content) const {
    write_file(path(name), content);
    return path(name);
  }
  std::string file(const std::string &name, const Bytes &content) const {
    return file(name, characters(content));
  }

  Outcome run_program(std::vector<std::string> words, const std::string &input,
                      std::vector<std::string> environment) const {
    write_file(path("stdin"), input);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    const int created = O_WRONLY | O_CREAT | O_TRUNC;
    posix_spawn_file_actions_addopen(&actions, 0, path("stdin").c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, path("stdout").c_str(), created, 0600);
    posix_spawn_file_actions_addopen(&actions, 2, path("stderr").c_str(), created, 0600);
    for (char **variable = environ; *variable != nullptr; ++variable)
      environment.emplace_back(*variable);
    pid_t child = 0;
    const int failure = posix_spawnp(&child, words[0].c_str(), &actions, nullptr,
                                     pointers(words).data(), pointers(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    EXPECT_EQ(0, failure) << words[0];
    int status = 0;
    if (failure == 0) waitpid(child, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status),
            read_file(path("stdout")), read_file(path("stderr"))};
  }

  /// Runs the tool. What is in `environment` goes in front of the test's own. Pages are so wide
  /// that no line is wrapped, unless the environment says otherwise.
  Outcome run(std::vector<std::string> words, const std::string &input = "",
              std::vector<std::string> environment = {}) const {
    words.insert(words.begin(), ORVELASN1_TOOL_PATH);
    environment.emplace_back("COLUMNS=1000");
    return run_program(words, input, std::move(environment));
  }

  /// Runs openssl, which must succeed, and returns what it prints.
  std::string openssl(std::vector<std::string> words, const std::string &input = "") const {
    words.insert(words.begin(), "openssl");
    const Outcome result = run_program(words, input, {});
    EXPECT_EQ(0, result.status) << result.err;
    return result.out;
  }

  /// A self-signed certificate as PEM. `key` is the argument of -newkey and what belongs to it.
  std::string make_certificate(const std::vector<std::string> &key,
                               const std::vector<std::string> &more = {}) const {
    std::vector<std::string> words{"req",           "-x509", "-nodes", "-utf8",  "-keyout",
                                   path("key.pem"), "-days", "400",    "-newkey"};
    words.insert(words.end(), key.begin(), key.end());
    words.insert(words.end(), more.begin(), more.end());
    if (std::ranges::find(more, "-subj") == more.end())
      words.insert(words.end(), {"-subj", "/C=DE/O=Example, Ltd./CN=www.example.org"});
    return openssl(words);
  }

  std::string to_der(const std::string &pem) const {
    return openssl({"x509", "-outform", "DER"}, pem);
  }
  std::string to_pem(const Bytes &der) const {
    return openssl({"x509", "-inform", "DER"}, characters(der));
  }

 private:
  static std::vector<char *> pointers(std::vector<std::string> &words) {
    std::vector<char *> out;
    for (std::string &word : words) out.push_back(word.data());
    out.push_back(nullptr);
    return out;
  }

  std::string folder_;
};

inline const std::vector<std::string> ec_key{"ec", "-pkeyopt", "ec_paramgen_curve:P-256"};

// ---- Parts made by hand -------------------------------------------------------------------------

inline Bytes sequence(const Bytes &content) { return element(0x30, content); }

/// A name of one attribute.
inline Bytes name(const Bytes &type, uint8_t tag, const Bytes &value) {
  return sequence(element(0x31, sequence(type + element(tag, value))));
}
inline Bytes common_name(const std::string &value, uint8_t tag = 0x0C) {
  return name(hex("06 03 55 04 03"), tag, support::text(value));
}

/// The algorithm identifier of Ed25519.
inline constexpr const char *ed25519 = "30 05 06 03 2B 65 70";

}  // namespace tool_tests

#endif
