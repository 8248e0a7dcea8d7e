// orvelasn1: shows, traces and writes back the structures that the library knows.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdlib>
#include <exception>

#include "commands/commands.h"
#include "system/output.h"
#include "text/characters.h"
#include "text/serials.h"

namespace {

constexpr int status_good = 0;
constexpr int status_bad_input = 1;
constexpr int status_wrong_usage = 2;

constexpr const char *overview = R"(Examples:
  orvelasn1 show server.pem                what is in a certificate, a CRL, a request ...
  orvelasn1 show --short /etc/ssl/certs/*  a few lines for each
  orvelasn1 show --json chain.pem | jq .   one JSON object a line
  orvelasn1 trace server.der               how the decoder reads it
  orvelasn1 recode --fresh server.der      whether it comes back octet by octet
  orvelasn1 name '/c=DE/cn(12)=Example'    the octets of a name
  orvelasn1 oid 2.5.29.15                  what an identifier is
  orvelasn1 types                          what "show" and the like can read
  orvelasn1 crl ca.crl --serial 0A1B       is it revoked?
  orvelasn1 key server.pem server.key      do they belong together?
  orvelasn1 diff old.pem new.pem           what has changed?

Inputs are PEM or DER, with one element or many. What an element is, its PEM label or its
structure tells, or you do, with --type. Without a file, or for the file "-", standard
input is read. The status is 0 when all is well, 1 for bad input, and 2 for
wrong usage. "orvelasn1 COMMAND --help" tells more about a command.)";

constexpr const char *show_examples = R"(Examples:
  orvelasn1 show server.pem                    a page for each element
  orvelasn1 show --short *.pem                 a few lines for each
  orvelasn1 show --oids server.pem             with the dotted identifiers
  orvelasn1 show --type crl-entry entry.der    a part that stands in no file by itself
  orvelasn1 show --at 2030-01-01 server.pem    will it still be valid then?
  openssl s_client -connect example.org:443 -showcerts </dev/null | orvelasn1 show
  orvelasn1 show --json *.pem | jq -r 'select(.tbsCertificate.validity.daysLeft < 30).pem'

The members of the JSON objects have the names of the library's fields; those of
certificates are described in certificate.schema.json.)";

constexpr const char *trace_examples = R"(Examples:
  orvelasn1 trace server.der
  orvelasn1 trace broken.der | tail     where did the decoder stop?)";

constexpr const char *recode_examples = R"(Examples:
  orvelasn1 recode server.der && echo "every octet came back"
  orvelasn1 recode --fresh server.pem            from the fields, not the kept octets
  orvelasn1 recode -o server.der server.pem      from PEM to DER)";

constexpr const char *name_examples = R"(Examples:
  orvelasn1 name '/c=DE/o(12)=Example//Co/cn(12)=www.example.org'
  orvelasn1 name -o name.der '/c=DE'
  orvelasn1 name --der name.der

A name is a "/" in front of each relative name and a "," between the attributes of one.
An attribute is a short name (gid cn gn ou sp c g i l m n o s t) or a dotted identifier,
the identifier octet of its value in parentheses (19, PrintableString, where there is
none), "=" and the value, with a "/" in front of each "/" and ",".)";

constexpr const char *types_examples = R"(Examples:
  orvelasn1 types
  orvelasn1 types | grep -i ocsp

Each line has the name for --type, what the type is, and the labels of PEM blocks that hold
it.)";

constexpr const char *oid_examples = R"(Examples:
  orvelasn1 oid 2.5.4.3               from the dotted form
  orvelasn1 oid 06:03:55:04:03        from the encoded form
  orvelasn1 oid id_at_commonName      from the name in the registry
  orvelasn1 oid commonName keyUsage   from the names that "show" prints
  orvelasn1 oid --list | sort -k 2    the whole registry)";

constexpr const char *crl_examples = R"(Examples:
  orvelasn1 crl ca.crl                            a summary
  orvelasn1 crl ca.crl --serial 0A:1B             revoked? when? why?
  orvelasn1 crl ca.crl --serial dec:2587          the same in decimal digits
  orvelasn1 crl ca.crl --certificate server.pem   by the certificate
  orvelasn1 crl --json ca.crl | jq .reasons

A serial number is hexadecimal, as 0A1B, 0a:1b or 0x0A1B, or decimal after "dec:". A
certificate is asked for only where the CRL is of its issuer.

The status is that of grep: 0 where a certificate is revoked, 1 where none is, and 2 where that
is not known: what is asked for or the CRL cannot be read to its end, or is of another issuer,
or lists only what has changed. Without a question it is 0, or 2.)";

constexpr const char *key_examples = R"(Examples:
  orvelasn1 key server.pem server.key && echo "they belong together"
  orvelasn1 key /etc/ssl/private/* /etc/ssl/certs/*    what belongs to what?
  orvelasn1 key --json server.pem | jq -r '.pins[]'    the pin, as curl --pinnedpubkey has it

Certificates, requests and keys are sorted by their public key. That of a private key is
computed where the key does not hold it. A pin is the SHA-256 digest of a SubjectPublicKeyInfo.

The status is 0 where all have one key, 1 where there are several, and 2 where that is not
known: an element cannot be read, has no key or an encrypted one.)";

constexpr const char *diff_examples = R"(Examples:
  orvelasn1 diff old.pem new.pem                      what has changed?
  orvelasn1 diff --json old.crl new.crl | jq -r .path
  orvelasn1 diff old.crl new.crl | grep -c '^+'
  openssl req -in server.csr -pubkey -noout | orvelasn1 diff - server.pub

The first element of one file is compared with the first of the other, the second with the
second, and so on. Each difference stands under the path of its place: "-" is before what the
first file has, "+" before what the second has. Extensions, entries of a CRL and their like are
compared by their identifiers and numbers, wherever they stand.

The status is that of diff: 0 where there is no difference, 1 where there is one, and 2 where
something cannot be read.)";

bool colour_wanted(const std::string &when) {
  if (when != "auto") return when == "always";
  const char *const no_color = std::getenv("NO_COLOR");
  const char *const terminal = std::getenv("TERM");
  return isatty(STDOUT_FILENO) != 0 && (no_color == nullptr || *no_color == '\0') &&
         (terminal == nullptr || std::string_view(terminal) != "dumb");
}

/// The command line of the tool. Parsing it fills a request and picks the command to run.
class CommandLine {
 public:
  CommandLine() {
    app_.require_subcommand(1);
    app_.set_version_flag("--version", "orvelasn1 " ORVELASN1_VERSION);
    app_.footer(overview);
    app_.failure_message([](const CLI::App *, const CLI::Error &error) {
      return std::string("orvelasn1: ") + error.what() + "\nTry \"orvelasn1 --help\".\n";
    });
    add_show();
    add_trace();
    add_recode();
    add_name();
    add_oid();
    add_types();
    add_crl();
    add_key();
    add_diff();
  }

  /// Returns the status of the tool.
  int run(int argc, char **argv) {
    try {
      app_.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
      return app_.exit(error) == 0 ? status_good : status_wrong_usage;
    }
    if (question_) return ask();
    return command_() ? status_good : status_bad_input;
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
          return tool::type_named(name) != nullptr
                     ? ""
                     : "no type has this name; \"orvelasn1 types\" lists them all";
        });
  }

  void add_show() {
    CLI::App *const command = add("show", "Print what elements hold", show_examples);
    command->add_option("FILE", show_.files, "PEM or DER; standard input without one, or for -");
    CLI::Option *const brief = command->add_flag("--short", brief_, "A few lines for each element");
    CLI::Option *const json = command->add_flag("--json", json_, "One JSON object a line");
    json->excludes(brief);
    command->add_flag("--oids", show_.view.oids, "The dotted identifier beside each name");
    command->add_flag("--full", show_.view.full,
                      "Long values in full, such as keys and signatures");
    add_moment(command);
    add_colour(command);
    add_type(command);
    command->callback([this] {
      using Form = tool::ShowRequest::Form;
      show_.form = json_ ? Form::json : brief_ ? Form::brief : Form::page;
      show_.type = tool::type_named(type_);
      fill(show_.view);
      command_ = [this] { return tool::show(show_); };
    });
  }

  void add_trace() {
    CLI::App *const command = add("trace", "Print the library's own trace", trace_examples);
    command->add_option("FILE", files_, "PEM or DER; standard input without one, or for -");
    add_type(command);
    command->callback(
        [this] { command_ = [this] { return tool::trace(files_, tool::type_named(type_)); }; });
  }

  void add_recode() {
    CLI::App *const command =
        add("recode", "Decode, encode, and say whether every octet came back", recode_examples);
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
        add("name", "Convert between the text and the octets of a name", name_examples);
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
    CLI::App *const command = add(
        "oid", "Translate object identifiers between dotted form, octets and names", oid_examples);
    CLI::Option *const oids = command->add_option("OID", oids_, "In any of the three forms");
    CLI::Option *const list = command->add_flag("--list", list_, "Print all names of the registry");
    list->excludes(oids);
    command->callback([this] {
      if (oids_.empty() && !list_) throw CLI::RequiredError("OID");
      command_ = [this] { return list_ ? tool::list_oids() : tool::translate_oids(oids_); };
    });
  }

  void add_types() {
    CLI::App *const command = add("types", "List the types that are read", types_examples);
    command->callback([this] { command_ = tool::list_types; });
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
    view.moment = moment_.empty() ? tool::now() : *tool::seconds_of(moment_);
  }

  void add_crl() {
    CLI::App *const command =
        add("crl", "Say whether certificates are revoked, or sum up a CRL", crl_examples);
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
        add("key", "Say which certificates, requests and keys belong together", key_examples);
    command->add_option("FILE", key_.files, "PEM or DER; standard input without one, or for -");
    command->add_flag("--json", key_.json, "One JSON object a line, for each key");
    add_colour(command);
    command->callback([this] {
      fill(key_.view);
      question_ = [this] { return tool::key(key_); };
    });
  }

  void add_diff() {
    CLI::App *const command = add("diff", "Say what differs between two files", diff_examples);
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
  std::string type_;
  std::string colour_ = "auto";
  std::string moment_;
  bool brief_ = false;
  bool json_ = false;
  tool::ShowRequest show_;
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
