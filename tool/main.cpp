// orvelasn1: shows, traces and writes back the structures that the library knows.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdlib>
#include <exception>

#include "commands/commands.h"
#include "help.h"
#include "model/outline_path.h"
#include "orvelasn1_version.h"
#include "system/output.h"
#include "system/pager.h"
#include "system/terminal.h"
#include "text/characters.h"
#include "text/nearest.h"
#include "text/serials.h"

namespace {

constexpr int status_good = 0;
constexpr int status_bad_input = 1;
constexpr int status_wrong_usage = 2;

bool colour_wanted(const std::string &when) {
  return when == "auto" ? tool::takes_colours() : when == "always";
}

/// Whether a word that is no command is meant as a file to show.
bool looks_like_file(const std::string &word) {
  return word == "-" || word.find_first_of("/.") != word.npos || access(word.c_str(), F_OK) == 0;
}

/// Says what is wrong with the first option of a command that it does not have. Returns an empty
/// text where there is no such option.
std::string unknown_option(const CLI::App *app) {
  std::vector<const CLI::App *> parsed{app};
  for (const CLI::App *const command : app->get_subcommands()) parsed.push_back(command);
  for (const CLI::App *const command : parsed) {
    std::vector<std::string> known;
    for (const CLI::Option *const option : command->get_options())
      for (const std::string &name : option->get_lnames()) known.push_back("--" + name);
    for (const std::string &word : command->remaining())
      if (word.starts_with("-"))
        return tool::in_quotes(word) + " is no option of \"" + command->get_name() + "\"" +
               tool::did_you_mean(word.substr(0, word.find('=')), known);
  }
  return {};
}

std::string failure_message(const CLI::App *app, const CLI::Error &error) {
  const std::string option = unknown_option(app);
  const auto commands = app->get_subcommands();
  return "orvelasn1: " + (option.empty() ? error.what() : option) + "\nTry \"orvelasn1 " +
         (commands.empty() ? "" : commands.front()->get_name() + " ") + "--help\".\n";
}

/// Says that no type has this name.
std::string no_type(const std::string &name) {
  std::vector<std::string> known;
  for (const tool::Type &type : tool::types()) known.push_back(type.name);
  return "no type has the name " + tool::in_quotes(name) + tool::did_you_mean(name, known) +
         " (\"orvelasn1 types\" lists them all)";
}

/// The command line of the tool. Parsing it fills a request and picks the command to run.
class CommandLine {
 public:
  CommandLine() {
    app_.require_subcommand(1);
    app_.set_version_flag("--version", "orvelasn1 " ORVELASN1_VERSION);
    app_.footer(tool::help::overview);
    app_.failure_message(failure_message);
    add_show();
    add_tree();
    add_diff();
    add_crl();
    add_key();
    add_map();
    add_recode();
    add_trace();
    add_name();
    add_oid();
    add_types();
  }

  /// Returns the status of the tool.
  int run(int argc, char **argv) {
    std::vector<std::string> words(argv + 1, argv + argc);
    const bool names_command =
        words.empty() || is_command(words[0]) || (words[0].starts_with("-") && words[0] != "-");
    if (!names_command && looks_like_file(words[0])) {
      words.insert(words.begin(), "show");
    } else if (!names_command) {
      tool::complain(no_command(words[0]));
      return status_wrong_usage;
    }
    try {
      std::ranges::reverse(words);  // as CLI11 takes them
      app_.parse(std::move(words));
    } catch (const CLI::ParseError &error) {
      return app_.exit(error) == 0 ? status_good : status_wrong_usage;
    }
    if (question_) return ask();
    const auto status = [this] { return command_() ? status_good : status_bad_input; };
    return pages_ ? tool::run_paged(status) : status();
  }

 private:
  /// Returns the answer as a status: what ends a question is no answer.
  int ask() {
    try {
      return static_cast<int>(question_());
    } catch (const std::exception &error) {
      tool::complain(tool::printable(std::string_view(error.what())));
      return static_cast<int>(tool::Answer::unknown);
    }
  }

  std::vector<std::string> commands() const {
    std::vector<std::string> names;
    for (const CLI::App *const command :
         app_.get_subcommands([](const CLI::App *) { return true; }))
      names.push_back(command->get_name());
    return names;
  }
  bool is_command(const std::string &word) const {
    const auto names = commands();
    return std::ranges::find(names, word) != names.end();
  }
  std::string no_command(const std::string &word) const {
    return tool::in_quotes(word) + " is no command and no file" +
           tool::did_you_mean(word, commands()) + " (\"orvelasn1 --help\" lists them all)";
  }

  CLI::App *add(const std::string &name, const std::string &purpose, const char *examples) {
    CLI::App *const command = app_.add_subcommand(name, purpose);
    command->footer(examples);
    return command;
  }

  void add_type(CLI::App *command) {
    command
        ->add_option("--type", type_,
                     "What elements are taken for, whatever their label; \"types\" lists the names")
        ->type_name("NAME")
        ->check([](const std::string &name) {
          return tool::type_named(name) != nullptr ? "" : no_type(name);
        });
  }

  void add_no_pager(CLI::App *command) {
    command->add_flag("--no-pager", no_pager_, "Print all at once, however long it is");
  }

  /// Whether a command shows what it prints in a pager. What is typed comes before that.
  bool pages(const std::vector<std::string> &files) const {
    const bool typed = files.empty() || std::ranges::find(files, "-") != files.end();
    return !no_pager_ && !(typed && isatty(STDIN_FILENO) != 0);
  }

  void add_show() {
    CLI::App *const command = add("show", "Print what elements hold", tool::help::show);
    command->add_option("FILE", show_.files, "PEM or DER; standard input without one, or for -");
    CLI::Option *const brief =
        command->add_flag("--short", brief_, "A line or two for each element");
    CLI::Option *const json = command->add_flag("--json", json_, "One JSON object a line");
    json->excludes(brief);
    command
        ->add_flag("--compact", show_.view.compact,
                   "With --json: no octets that stand there in another form, too")
        ->needs(json);
    command->add_flag("--oids", show_.view.oids, "The dotted identifier beside each name");
    command->add_flag("--full", show_.view.full,
                      "Long values in full, such as keys and signatures");
    command->add_flag("--secrets", show_.view.secrets, "The secret octets of private keys");
    add_moment(command);
    command
        ->add_option("--expires-within", within_,
                     "Only certificates and CRLs that expire within this time, or have: 12h, 30d, "
                     "2w, 1y")
        ->type_name("TIME")
        ->check([](const std::string &text) {
          return tool::duration_of(text) ? "" : "expected a number and a unit: 12h, 30d, 2w or 1y";
        });
    command->add_option("--sort", sort_, "What expires first comes first: notAfter")
        ->type_name("FIELD")
        ->check(CLI::IsMember({"notAfter"}));
    add_colour(command);
    add_no_pager(command);
    add_type(command);
    command->callback([this] {
      using Form = tool::ShowRequest::Form;
      show_.form = json_ ? Form::json : brief_ ? Form::brief : Form::page;
      show_.type = tool::type_named(type_);
      fill(show_.view);
      if (!within_.empty()) show_.within = tool::duration_of(within_);
      show_.by_end = !sort_.empty();
      pages_ = show_.form != Form::json && pages(show_.files);
      command_ = [this] { return tool::show(show_); };
    });
  }

  void add_tree() {
    CLI::App *const command = add("tree", "Print the outline of any DER or BER", tool::help::tree);
    command->add_option("FILE", tree_.files, "PEM or DER; standard input without one, or for -");
    command
        ->add_option("--path", tree_.path, "One place, such as tbsCertificate.extensions[keyUsage]")
        ->type_name("PATH")
        ->check([](const std::string &path) {
          return tool::OutlinePath::parse(path)
                     ? ""
                     : "expected names with dots between them, and numbers or identifiers in "
                       "brackets, such as tbsCertificate.extensions[keyUsage].extnValue[0]";
        });
    command->add_flag("--extract", tree_.extract,
                      "The octets of the place, in place of its outline");
    command->add_flag("--content", tree_.content, "The same without identifier and length octets");
    command->add_flag("--hex", tree_.style.hex, "A dump of the octets below each line");
    command->add_flag("--oids", tree_.style.oids, "The dotted identifier beside each name");
    command->add_flag("--full", tree_.style.full, "Long values and dumps to their end");
    add_colour(command);
    add_type(command);
    command->callback([this] {
      tree_.type = tool::type_named(type_);
      tree_.style.colour = colour_wanted(colour_);
      command_ = [this] { return tool::tree(tree_); };
    });
  }

  void add_trace() {
    CLI::App *const command = add("trace", "Print the library's own trace", tool::help::trace);
    command->add_option("FILE", files_, "PEM or DER; standard input without one, or for -");
    add_type(command);
    command->callback(
        [this] { command_ = [this] { return tool::trace(files_, tool::type_named(type_)); }; });
  }

  void add_map() {
    CLI::App *const command =
        add("map", "Print a line for each element of any number of them", tool::help::map);
    command->add_option("FILE", map_.files, "Standard input without one, or for -");
    command
        ->add_option("--in", map_format_,
                     "What records are: base64, csv:COLUMN, jsonl:MEMBER, ct, pem or der; without "
                     "it, what the input begins with says it")
        ->type_name("FORMAT")
        ->check([](const std::string &text) {
          return tool::Format::parse(text)
                     ? ""
                     : "expected base64, csv:COLUMN, jsonl:MEMBER, ct, pem or der";
        });
    CLI::Option *const fields =
        command
            ->add_option("--fields", map_fields_,
                         "These fields only, with commas between them, as columns with tabs")
            ->type_name("FIELDS")
            ->delimiter(',')
            ->allow_extra_args(false)
            ->check(check_field);
    CLI::Option *const csv = command->add_flag("--csv", csv_, "The fields as CSV")->needs(fields);
    CLI::Option *const json =
        command->add_flag("--json", json_, "JSON objects, with the fields or all there is")
            ->excludes(csv);
    command->add_flag("--header", map_.header, "A first line with the names of the columns")
        ->needs(fields)
        ->excludes(json);
    command->add_option("--where", condition_, "Only elements that meet a condition")
        ->type_name("CONDITION")
        ->check(check_condition);
    command->add_flag("--compact", map_.view.compact,
                      "No octets in JSON that stand there in another form, too");
    command->add_flag("--secrets", map_.view.secrets, "The secret octets of private keys");
    command->add_flag("--strict", map_.strict, "Status 1 where an element cannot be read");
    command->add_option("--jobs", map_.jobs, "Processes that work at a time; one a processor")
        ->type_name("N")
        ->check(CLI::Range(1, 127));
    CLI::Option *const list =
        command->add_flag("--list-fields", list_, "Print the fields that there are");
    add_moment(command);
    add_type(command);
    command->callback([this, list] {
      using Form = tool::MapRequest::Form;
      if (*list) {
        command_ = tool::list_fields;
        return;
      }
      fill(map_.view);
      map_.type = tool::type_named(type_);
      if (!map_format_.empty()) map_.format = *tool::Format::parse(map_format_);
      for (const std::string &name : map_fields_) map_.fields.push_back(tool::field_named(name));
      map_.form = json_ || map_.fields.empty() ? Form::json : csv_ ? Form::csv : Form::tsv;
      if (!condition_.empty())
        map_.condition =
            std::get<tool::Condition>(tool::Condition::parse(condition_, map_.view.moment));
      command_ = [this] { return tool::map(map_); };
    });
  }

  static std::string check_field(const std::string &name) {
    if (tool::field_named(name) != nullptr) return "";
    std::vector<std::string> known;
    for (const tool::Field &field : tool::fields()) known.emplace_back(field.name);
    return "no field has the name " + tool::in_quotes(name) + tool::did_you_mean(name, known) +
           " (\"orvelasn1 map --list-fields\" lists them all)";
  }

  static std::string check_condition(const std::string &text) {
    const auto condition = tool::Condition::parse(text, 0);
    const auto *const mistake = std::get_if<tool::Condition::Mistake>(&condition);
    return mistake == nullptr
               ? ""
               : "character " + std::to_string(mistake->place) + ": " + mistake->text;
  }

  void add_recode() {
    CLI::App *const command =
        add("recode", "Decode, encode, and say whether every octet came back", tool::help::recode);
    command->add_option("FILE", recode_.file, "PEM or DER; standard input without one, or for -");
    command->add_option("-o,--output", recode_.output, "Write the encodings to this file, as DER")
        ->type_name("OUT");
    command->add_flag("--fresh", recode_.fresh,
                      "Encode from the fields: forget the octets kept from decoding");
    add_type(command);
    command->callback([this] {
      recode_.type = tool::type_named(type_);
      command_ = [this] { return tool::recode(recode_); };
    });
  }

  void add_name() {
    CLI::App *const command =
        add("name", "Convert between the text and the octets of a name", tool::help::name);
    CLI::Option *const text = command->add_option("TEXT", name_text_, "A textual name");
    CLI::Option *const der =
        command->add_option("--der", name_file_, "Print the names in this file as text")
            ->type_name("FILE")
            ->excludes(text);
    command->add_option("-o,--output", name_output_, "Write the octets to this file")
        ->type_name("OUT")
        ->excludes(der);
    command->callback([this, text, der] {
      if (!*text && !*der) throw CLI::RequiredError("TEXT or --der");
      const bool decodes = static_cast<bool>(*der);
      command_ = [this, decodes] {
        return decodes ? tool::decode_names(name_file_)
                       : tool::encode_name(name_text_, name_output_);
      };
    });
  }

  void add_oid() {
    CLI::App *const command =
        add("oid", "Translate object identifiers between dotted form, octets and names",
            tool::help::oid);
    CLI::Option *const oids = command->add_option("OID", oids_, "In any of the three forms");
    CLI::Option *const list = command->add_flag("--list", list_, "Print all names of the registry");
    list->excludes(oids);
    command->callback([this] {
      if (oids_.empty() && !list_) throw CLI::RequiredError("OID");
      command_ = [this] { return list_ ? tool::list_oids() : tool::translate_oids(oids_); };
    });
  }

  void add_types() {
    CLI::App *const command = add("types", "List the types that are read", tool::help::types);
    add_no_pager(command);
    command->callback([this] {
      pages_ = !no_pager_;
      command_ = tool::list_types;
    });
  }

  void add_colour(CLI::App *command) {
    command->add_option("--color", colour_, "Colours: auto, always or never")
        ->type_name("WHEN")
        ->check(CLI::IsMember({"auto", "always", "never"}))
        ->capture_default_str();
  }

  void add_moment(CLI::App *command) {
    command
        ->add_option("--at", moment_, "The moment for which validity is judged, such as 2030-01-31")
        ->type_name("TIME")
        ->check([](const std::string &text) {
          return tool::seconds_of(text) ? "" : "expected 2030-01-31 or 2030-01-31T12:00:00Z";
        });
  }

  void fill(tool::View &view) const {
    view.colour = colour_wanted(colour_);
    view.columns = tool::page_columns();
    view.moment = moment_.empty() ? tool::now() : *tool::seconds_of(moment_);
  }

  void add_crl() {
    CLI::App *const command =
        add("crl", "Say whether certificates are revoked, or sum up a CRL", tool::help::crl);
    command->add_option("FILE", crl_.file, "PEM or DER; standard input without one, or for -");
    command
        ->add_option("--serial", crl_.serials,
                     "The serial number of a certificate; may be repeated")
        ->type_name("HEX")
        ->allow_extra_args(false)
        ->check([](const std::string &text) {
          return tool::serial_of(text) ? "" : "expected 0A1B, 0a:1b, 0x0A1B or dec:2587";
        });
    command
        ->add_option("--certificate", crl_.certificates,
                     "A file whose certificates are asked for; may be repeated")
        ->type_name("FILE")
        ->allow_extra_args(false);
    command->add_flag("--json", crl_.json, "One JSON object a line");
    add_moment(command);
    add_colour(command);
    command->callback([this] {
      fill(crl_.view);
      question_ = [this] { return tool::crl(crl_); };
    });
  }

  void add_key() {
    CLI::App *const command =
        add("key", "Say which certificates, requests and keys belong together", tool::help::key);
    command->add_option("FILE", key_.files, "PEM or DER; standard input without one, or for -");
    command->add_flag("--json", key_.json, "One JSON object a line, for each key");
    add_colour(command);
    command->callback([this] {
      fill(key_.view);
      question_ = [this] { return tool::key(key_); };
    });
  }

  void add_diff() {
    CLI::App *const command = add("diff", "Say what differs between two files", tool::help::diff);
    command->add_option("A", diff_.a, "PEM or DER; standard input for -")->required();
    command->add_option("B", diff_.b, "PEM or DER; standard input for -")->required();
    command->add_flag("--json", diff_.json, "One JSON object a line, for each difference");
    command->add_flag("--oids", diff_.view.oids, "The dotted identifier beside each name");
    add_type(command);
    add_colour(command);
    command->callback([this] {
      fill(diff_.view);
      diff_.type = tool::type_named(type_);
      question_ = [this] { return tool::diff(diff_); };
    });
  }

  CLI::App app_{"Shows, traces and writes back ASN.1 structures of public-key infrastructures",
                "orvelasn1"};
  std::function<bool()> command_;
  std::function<tool::Answer()> question_;  ///< what is run in place of a command
  bool pages_ = false;
  bool no_pager_ = false;
  std::string type_;
  std::string colour_ = "auto";
  std::string moment_;
  std::string within_;
  std::string sort_;
  bool brief_ = false;
  bool json_ = false;
  tool::ShowRequest show_;
  tool::TreeRequest tree_;
  std::vector<std::string> files_;
  tool::RecodeRequest recode_;
  std::string name_text_;
  std::string name_file_;
  std::string name_output_;
  std::vector<std::string> oids_;
  bool list_ = false;
  tool::CrlRequest crl_;
  tool::KeyRequest key_;
  tool::DiffRequest diff_;
  tool::MapRequest map_;
  std::string map_format_;
  std::vector<std::string> map_fields_;
  std::string condition_;
  bool csv_ = false;
};

}  // namespace

int main(int argc, char **argv) {
  // A reader that goes away ends the tool quietly, even if the caller had the signal ignored.
  std::signal(SIGPIPE, SIG_DFL);
  try {
    return CommandLine().run(argc, argv);
  } catch (const std::exception &error) {
    tool::complain(tool::printable(std::string_view(error.what())));
    return status_bad_input;
  }
}
