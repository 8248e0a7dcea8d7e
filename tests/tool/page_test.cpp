// How pages fit the terminal, and the pager.
#include <sys/ioctl.h>
#include <termios.h>

#include "records.h"

namespace page_test {

namespace {

using namespace tool_tests;

class Pages : public Tool {
 protected:
  /// The page of a character string on so many columns. Its key takes 5 of them, with 2 in front
  /// and 2 after it.
  std::string page(const std::string &value, const std::string &columns) const {
    const Outcome result =
        run({"show", "--type", "utf8-string"}, characters(string(value)), {"COLUMNS=" + columns});
    EXPECT_EQ(0, result.status) << result.err;
    const std::string heading = "UTF8String  standard input: element 1\n";
    EXPECT_TRUE(result.out.starts_with(heading)) << result.out;
    return result.out.substr(std::min(heading.size(), result.out.size()));
  }

  static Bytes string(const std::string &value) { return element(0x0C, support::text(value)); }

  /// Runs the tool on a terminal of this size. Returns what the terminal shows, and the status.
  Outcome on_terminal(std::vector<std::string> words, unsigned short rows, unsigned short columns,
                      std::vector<std::string> environment) const {
    const int master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    EXPECT_LE(0, master);
    EXPECT_EQ(0, grantpt(master));
    EXPECT_EQ(0, unlockpt(master));
    const std::string name = ptsname(master);
    winsize size{};
    size.ws_row = rows;
    size.ws_col = columns;
    const int slave = open(name.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    EXPECT_EQ(0, ioctl(slave, TIOCSWINSZ, &size));

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    for (const int descriptor : {1, 2})
      posix_spawn_file_actions_adddup2(&actions, slave, descriptor);
    words.insert(words.begin(), ORVELASN1_TOOL_PATH);
    std::vector<std::string> variables = std::move(environment);
    if (std::ranges::none_of(variables, [](const auto &one) { return one.starts_with("PATH="); }))
      variables.push_back("PATH=" + std::string(std::getenv("PATH")));
    std::vector<char *> arguments;
    for (std::string &word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    std::vector<char *> settings;
    for (std::string &variable : variables) settings.push_back(variable.data());
    settings.push_back(nullptr);
    pid_t child = 0;
    EXPECT_EQ(0, posix_spawn(&child, words[0].c_str(), &actions, nullptr, arguments.data(),
                             settings.data()));
    posix_spawn_file_actions_destroy(&actions);
    close(slave);

    // Reading fails once no process has the terminal any more.
    std::string shown;
    char buffer[4096];
    for (ssize_t count = 0; (count = read(master, buffer, sizeof buffer)) > 0;)
      shown.append(buffer, static_cast<size_t>(count));
    close(master);
    int status = 0;
    waitpid(child, &status, 0);
    std::erase(shown, '\r');
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), shown, ""};
  }

  static std::vector<std::string> lines_of(const std::string &text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
  }

  static std::string numbered(const std::string &prefix, const std::string &text) {
    std::string out;
    for (const std::string &line : lines_of(text)) out.append(prefix).append(line).append("\n");
    return out;
  }
};

// ---- Wrapping -----------------------------------------------------------------------------------

TEST_F(Pages, WrapAtBlanksUnderTheColumn) {
  EXPECT_EQ(
      "  value  one two three four five six\n"
      "           seven eight\n"
      "\n",
      page("one two three four five six seven eight", "40"));
  // 31 columns are just enough.
  EXPECT_EQ("  value  one two three four five six abc\n\n",
            page("one two three four five six abc", "40"));
}

TEST_F(Pages, BreakLongWordsAfterMarksOrAnywhere) {
  EXPECT_EQ(
      "  value  http://www.example.org/one/two/\n"
      "           three/four/five/six/seven\n"
      "\n",
      page("http://www.example.org/one/two/three/four/five/six/seven", "40"));
  EXPECT_EQ("  value  " + std::string(31, 'a') + "\n           " + std::string(19, 'a') + "\n\n",
            page(std::string(50, 'a'), "40"));
  // A word that fits into a line of its own is not broken.
  EXPECT_EQ(
      "  value  see\n"
      "           http://www.example.org/abcdef\n"
      "\n",
      page("see http://www.example.org/abcdef", "40"));
}

// U+4E2D takes two columns, e and U+0301 together one.
TEST_F(Pages, KnowHowWideCharactersAre) {
  const auto repeated = [](size_t count, const std::string &text) {
    std::string out;
    for (size_t i = 0; i < count; ++i) out += text;
    return out;
  };
  EXPECT_EQ(
      "  value  x" + repeated(15, "\u4E2D") + "\n           " + repeated(5, "\u4E2D") + "\n\n",
      page("x" + repeated(20, "\u4E2D"), "40"));
  const std::string narrow = "x" + repeated(30, "e\u0301");
  EXPECT_EQ("  value  " + narrow + "\n\n", page(narrow, "40"));
}

// An extension that nobody knows has its identifier for a key.
TEST_F(Pages, WrapLongKeysToo) {
  const std::string pem = make_certificate(
      ec_key, {"-addext", "1.3.6.1.4.1.311.21.8.1234567.1234567.1234567.1234567.1234567=DER:0500"});
  const Outcome result = run({"show"}, pem, {"COLUMNS=40"});
  EXPECT_NE(std::string::npos, result.out.find("\n  1.3.6.1.4.1.311.21.8.1234567.1234567.\n"
                                               "    1234567.1234567.1234567\n"))
      << result.out;
  for (const std::string &line : lines_of(result.out))
    EXPECT_TRUE(line.size() <= 40 || line.starts_with("Certificate")) << line;
}

TEST_F(Pages, AreEightyColumnsWideByThemselves) {
  std::string words;
  for (int i = 0; i < 100; ++i) words += "word ";
  const std::string path = file("n.der", string(words));
  const std::string command =
      std::string("'") + ORVELASN1_TOOL_PATH + "' show --type utf8-string " + path;
  for (const char *const environment : {"env -u COLUMNS ", "env COLUMNS= ", "env COLUMNS=-5 "}) {
    const Outcome result = run_program({"sh", "-c", environment + command}, "", {});
    const auto lines = lines_of(result.out);
    ASSERT_LT(6U, lines.size()) << result.out;
    size_t longest = 0;
    for (size_t i = 1; i < lines.size(); ++i) longest = std::max(longest, lines[i].size());
    EXPECT_LT(75U, longest);
    EXPECT_GE(80U, longest);
  }
  const Outcome narrow = run_program({"sh", "-c", "env COLUMNS=1 " + command}, "", {});
  EXPECT_NE(std::string::npos, narrow.out.find("  value  word word word word word word\n"));
}

TEST_F(Pages, WrapAMegabyteInLinearTime) {
  // Lines of 71 and 69 characters.
  EXPECT_EQ(1 + (1000000 - 71 + 68) / 69 + 1,
            std::ranges::count(page(std::string(1000000, '/'), "80"), '\n'));
  std::string words;
  for (int i = 0; i < 200000; ++i) words += "abcd ";
  // 14 words in the first line, 14 in each other one; the last one is followed by nothing.
  EXPECT_EQ((200000 + 13) / 14 + 1, std::ranges::count(page(words, "80"), '\n'));
}

// ---- Terminals ----------------------------------------------------------------------------------

TEST_F(Pages, AreAsWideAsTheTerminal) {
  std::string words;
  for (int i = 0; i < 100; ++i) words += "word ";
  const std::string path = file("n.der", string(words));
  const std::vector<std::string> command{"show", "--type", "utf8-string", "--no-pager", path};
  const auto longest = [&](const std::vector<std::string> &environment) {
    size_t most = 0;
    for (const std::string &line : lines_of(on_terminal(command, 24, 120, environment).out))
      if (!line.starts_with("UTF8String")) most = std::max(most, line.size());
    return most;
  };
  const std::vector<std::string> plain{"NO_COLOR=1"};
  EXPECT_LT(115U, longest(plain));
  EXPECT_GE(120U, longest(plain));
  EXPECT_GE(60U, longest({"NO_COLOR=1", "COLUMNS=60"}));
}

TEST_F(Pages, AreColouredUnlessNoColorIsSet) {
  const std::string path = file("n.der", string("ab"));
  const std::vector<std::string> command{"show", "--type", "utf8-string", path};
  EXPECT_EQ("\x1B[1mUTF8String\x1B[0m  \x1B[2m" + path +
                ": element 1\x1B[0m\n  \x1B[2mvalue\x1B[0m  ab\n\n",
            on_terminal(command, 24, 200, {"TERM=xterm"}).out);
  const std::string plain = "UTF8String  " + path + ": element 1\n  value  ab\n\n";
  EXPECT_EQ(plain, on_terminal(command, 24, 200, {"NO_COLOR=1"}).out);
  EXPECT_EQ(plain, on_terminal(command, 24, 200, {"TERM=dumb"}).out);
}

TEST_F(Pages, GoToThePagerWhenTheyAreLongerThanTheTerminal) {
  const Bytes one = string("ab");
  const std::string path = file("n.der", one + one + one);
  const std::vector<std::string> command{"show", "--type", "utf8-string", path};
  const std::string plain = run(command).out;
  ASSERT_EQ(9, std::ranges::count(plain, '\n'));
  const std::vector<std::string> environment{"NO_COLOR=1", "PAGER=sed 's/^/P:/'"};
  EXPECT_EQ(plain, on_terminal(command, 10, 200, environment).out);
  EXPECT_EQ(numbered("P:", plain), on_terminal(command, 9, 200, environment).out);
  EXPECT_EQ(
      plain,
      on_terminal({"show", "--no-pager", "--type", "utf8-string", path}, 9, 200, environment).out);
  EXPECT_EQ(plain, on_terminal(command, 9, 200, {"NO_COLOR=1", "PAGER="}).out);
  EXPECT_EQ(plain, on_terminal(command, 9, 200, {"NO_COLOR=1", "PAGER=cat"}).out);
}

TEST_F(Pages, GoToLessWhereItIs) {
  std::filesystem::create_directory(path("bin"));
  file("bin/less", "#!/bin/sh\necho \"less $* $LESS\"\ncat\n");
  std::filesystem::permissions(path("bin/less"), std::filesystem::perms::owner_all);
  const std::string input = file("n.der", string("ab"));
  const std::vector<std::string> command{"show", "--type", "utf8-string", input};
  const std::string plain = run(command).out;
  EXPECT_EQ(
      "less -R R\n" + plain,
      on_terminal(command, 2, 200, {"NO_COLOR=1", "PATH=" + path("bin") + ":/bin:/usr/bin"}).out);
  EXPECT_EQ("less -R x\n" + plain,
            on_terminal(command, 2, 200,
                        {"NO_COLOR=1", "LESS=x", "PATH=" + path("bin") + ":/bin:/usr/bin"})
                .out);
  // Quietly none where there is none.
  EXPECT_EQ(plain, on_terminal(command, 2, 200, {"NO_COLOR=1", "PATH=" + path("none")}).out);
}

TEST_F(Pages, KeepTheStatusAndTheMessagesInThePager) {
  const Bytes one = string("ab");
  const std::string path = file("n.der", characters(one) + "\n" + characters(one));
  const std::vector<std::string> command{"show", "--type", "utf8-string", path};
  const Outcome result = on_terminal(command, 2, 200, {"NO_COLOR=1", "PAGER=sed 's/^/P:/'"});
  EXPECT_EQ(1, result.status);
  EXPECT_EQ("P:UTF8String  " + path + ": element 1\nP:  value  ab\nP:\nP:orvelasn1: " + path +
                ": element 1, offset 4: 5 octets after it are not DER: skipped (0A 0C 02 61 62)\n",
            result.out);
}

TEST_F(Pages, EndQuietlyWithThePager) {
  const Bytes one = string("ab");
  std::string many;
  for (int i = 0; i < 20000; ++i) many += characters(one);
  const std::string path = file("n.der", many);
  const Outcome result = on_terminal({"show", "--type", "utf8-string", path}, 24, 200,
                                     {"NO_COLOR=1", "PAGER=head -n 1"});
  EXPECT_EQ(0, result.status);
  EXPECT_EQ("UTF8String  " + path + ": element 1\n", result.out);
}

}  // namespace

}  // namespace page_test
