#include "cli/Console.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <ostream>

#include "cli/Commands.h"
#include "cli/Printable.h"
#include "cli/TerminalMessages.h"
#include "conf/ConfFolder.h"
#include "conf/EndApplication.h"
#include "files/Folder.h"
#include "merge/StateFolder.h"
#include "registry/OpenRegistry.h"
#include "text/Charset.h"

namespace quenmar {

namespace {

struct Arguments {
  bool yes = false;
  bool no = false;
  bool fixLineEnds = false;
  std::string registry;
  CheckArguments check;
  CompareArguments compare;
  DumpArguments dump;
  MergeArguments merge;
};

/// Turns a path argument into a `Path` when it is parsed.
CLI::Option* AddPath(CLI::App& command, const std::string& name, Path& target,
                     const std::string& description) {
  return command
      .add_option_function<std::string>(
          name, [&target](const std::string& text) { target = ArgumentPath(text); }, description)
      ->type_name("")
      ->required();
}

void AddBase(CLI::App& command, std::optional<Path>& base) {
  command
      .add_option_function<std::string>(
          "--base", [&base](const std::string& text) { base = ArgumentPath(text); },
          "Folder of the old release's files, to report what the release itself has changed "
          "(default: those that the last save kept)")
      ->type_name("DIR");
}

/// An option that may be given many times, one value each.
void AddRepeated(CLI::App& command, const std::string& name, std::vector<std::string>& values,
                 const std::string& type, const std::string& description) {
  command
      .add_option_function<std::string>(
          name, [&values](const std::string& value) { values.push_back(value); }, description)
      ->trigger_on_parse()
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast)
      ->type_name(type);
}

void AddCheck(CLI::App& app, CheckArguments& arguments) {
  CLI::App& command = *app.add_subcommand(
      "check",
      "Report what is new, changed, obsolete and commented out on the server, and what a merge "
      "would change, per file and in sum");
  AddPath(command, "DIST_DIR", arguments.distribution, "Folder of the distribution's files");
  AddPath(command, "SERVER_DIR", arguments.server, "Folder of the running server's files");
  command.add_option("FILE", arguments.files, "Names of files to check (default: all *.conf)")
      ->type_name("");
  command.add_flag("--json", arguments.json, "Print a JSON array instead of text");
  AddBase(command, arguments.base);
}

void AddCompare(CLI::App& app, CompareArguments& arguments) {
  CLI::App& command =
      *app.add_subcommand("compare", "Print the six result trees of two files as JSON");
  command.add_flag("--sort", arguments.sort, "Sort new and obsolete entries by name");
  AddPath(command, "DIST_FILE", arguments.distribution, "The distribution's file");
  AddPath(command, "SERVER_FILE", arguments.server, "The server's file");
}

void AddMerge(CLI::App& app, MergeArguments& arguments) {
  CLI::App& command = *app.add_subcommand(
      "merge",
      "Write the server's file anew: its values for the settings that the distribution "
      "knows; obsolete settings are removed unless restored, new ones are added on request");
  AddPath(command, "DIST_DIR", arguments.distribution, "Folder of the distribution's files");
  AddPath(command, "SERVER_DIR", arguments.server, "Folder of the running server's files");
  CLI::Option* const file =
      command.add_option("FILE", arguments.file, "Name of the file to merge")->type_name("");
  CLI::Option* const all =
      command.add_flag("--all", arguments.all, "Merge every file, a new one only after a Yes")
          ->excludes(file);
  command
      .add_option_function<std::string>(
          "--layout",
          [&arguments](const std::string& name) { arguments.layout = LayoutNamed(FromUtf8(name)); },
          "What the file is made of: settings only, the server's own lines, or the distribution's "
          "lines")
      ->check(CLI::IsMember({"settings", "server", "distribution"}))
      ->type_name("LAYOUT");
  AddRepeated(command, "--restore", arguments.restore, "NAME", "Keep an obsolete setting");
  command.add_flag("--restore-all", arguments.restoreAll, "Keep all obsolete settings");
  AddRepeated(command, "--add", arguments.add, "NAME", "Add a new setting");
  command.add_flag("--add-mandatory", arguments.addMandatory, "Add all new mandatory settings");
  command.add_flag("--add-all", arguments.addAll, "Add all new settings");
  AddRepeated(command, "--remove", arguments.remove, "NAME", "Remove a setting");
  command.add_flag("--take-defaults", arguments.takeDefaults,
                   "Give every setting that still has the old release's default the new one");
  AddBase(command, arguments.base);
  AddRepeated(command, "--set", arguments.set, "NAME=VALUE", "Give a kept setting another value");
  AddRepeated(command, "--switch-on", arguments.switchOn, "NAME|TYPE:VALUE",
              "Make a setting (not with layout settings) or a series entry active");
  AddRepeated(command, "--switch-off", arguments.switchOff, "NAME|TYPE:VALUE",
              "Comment a setting (not with layout settings) or a series entry out");
  CLI::Option* const output =
      command.add_option("--output", arguments.output, "Write to PATH instead; - prints the file")
          ->type_name("PATH")
          ->excludes(all);
  command.add_flag("--dry-run", arguments.dryRun, "Write nothing; print what a save would change")
      ->excludes(output);
}

void AddDump(CLI::App& app, DumpArguments& arguments) {
  CLI::App& command = *app.add_subcommand("dump", "Print the trees of one file as JSON");
  command.add_option("--xml", arguments.xml, "Print one tree as XML text instead")
      ->check(CLI::IsMember({"settings", "series"}))
      ->type_name("TREE");
  AddPath(command, "FILE", arguments.file, "The file");
}

std::unique_ptr<CLI::App> MakeParser(Arguments& arguments) {
  auto app = std::make_unique<CLI::App>(
      "Compare and merge the configuration files of a game server's distribution with those of the "
      "running server.",
      "quenmarctl");
#ifdef _WIN32
  app->allow_windows_style_options(false);  // a path may begin with a slash
#endif
  app->fallthrough();
  app->require_subcommand(0, 1);  // see `RequireCommand`
  app->set_version_flag("--version", "quenmarctl " QUENMAR_VERSION);
  CLI::Option* const yes = app->add_flag("--yes", arguments.yes, "Answer every question with Yes");
  app->add_flag("--no", arguments.no, "Answer every question with No")->excludes(yes);
  app->add_option("--registry", arguments.registry, "Registry file to take the options from")
      ->type_name("FILE");
  app->add_flag("--fix-line-ends", arguments.fixLineEnds,
                "Rewrite files with bare LF line ends while reading them: every LF becomes CR LF");
  app->footer(
      "Results go to standard output, questions and messages to standard error. Options come from\n"
      "the file that QUENMAR_REGISTRY names, or from their usual place. A merge keeps the file "
      "that it\n"
      "replaces as FILE.bak, and the distribution's file in the folder QUENMAR_STATE, or in its "
      "usual\nplace.\n"
      "Exit status: 0 done or nothing to do, 1 check found differences, 2 failed.");
  AddCheck(*app, arguments.check);
  AddCompare(*app, arguments.compare);
  AddMerge(*app, arguments.merge);
  AddDump(*app, arguments.dump);
  app->allow_extras();  // after the commands, which would inherit it; see `RequireCommand`
  return app;
}

/// Throws `CLI::ParseError` unless there is one command and nothing that no command knows. The
/// parser itself would ask for a command where an unknown one was given.
void RequireCommand(const CLI::App& app) {
  const std::vector<std::string> rest = app.remaining();
  const auto fail = [](const std::string& text) { throw CLI::ValidationError(text); };
  if (!app.get_subcommands().empty()) {
    const CLI::App& command = *app.get_subcommands().front();
    if (command.get_name() == "merge" && command.count("FILE") + command.count("--all") == 0) {
      fail("merge: FILE or --all is required");
    }
    if (!rest.empty()) fail("The following argument was not expected: " + rest.front());
  } else if (rest.empty()) {
    fail("A command is required");
  } else if (rest.front().starts_with('-')) {
    fail("Unknown option: " + rest.front());
  } else {
    fail("Unknown command: " + rest.front());
  }
}

Answers AnswersOf(const Arguments& arguments, const ConsoleStreams& streams) {
  if (arguments.yes) return Answers::kYes;
  return streams.interactive && !arguments.no ? Answers::kAsk : Answers::kNo;
}

int RunCommand(const CLI::App& app, const Arguments& arguments, const ConsoleStreams& streams) {
  const auto registry = OpenRegistry(arguments.registry.empty() ? std::optional<Path>()
                                                                : ArgumentPath(arguments.registry));
  if (const String reason = registry->ErrorText(); !reason.empty()) {
    streams.err << "quenmarctl: " << ToUtf8(reason) << '\n';
  }
  const Language language = Language::LoadLanguage(*registry);
  const Options options = ReadOptions(*registry);
  TerminalMessages messages(streams, AnswersOf(arguments, streams));
  SeenFiles seen(StateFolder());
  const CommandContext context{streams, options, language, messages, seen, arguments.fixLineEnds};

  if (app.got_subcommand("check")) return RunCheck(arguments.check, context);
  if (app.got_subcommand("compare")) return RunCompare(arguments.compare, context);
  if (app.got_subcommand("merge")) return RunMerge(arguments.merge, context);
  return RunDump(arguments.dump, context);
}

}  // namespace

Path ArgumentPath(const std::string& argument) {
  return std::u8string(argument.begin(), argument.end());
}

ConfReader::BareLineFeeds CommandContext::BareLineFeeds(bool mayRepair) const {
  using Choice = ConfReader::BareLineFeeds;
  if (!fixLineEnds) return Choice::kEndLines;
  return mayRepair ? Choice::kRepairInFile : Choice::kRepairInMemory;
}

bool ReadConfFile(const Path& file, std::shared_ptr<Document>& settings,
                  std::shared_ptr<Document>& series, const CommandContext& context,
                  ConfReader::Comments comments, ConfNotes* notes) {
  context.messages.SetSubject(file);
  const ConfReader reader(context.options, context.language, context.messages,
                          context.BareLineFeeds(), comments);
  return reader.LoadConfFile(file, settings, series, notes);
}

std::vector<Path> DistributionFiles(const Path& distribution) {
  String reason;
  std::vector<Path> files = ListConfFiles(distribution, reason);
  if (files.empty() && reason.empty()) reason = u"no .conf file in it";
  if (!reason.empty()) throw CommandError(ToUtf8(PathText(distribution) + u": " + reason));
  std::sort(files.begin(), files.end());
  return files;
}

Path FileIn(const Path& folder, const Path& file) {
  if (file.empty() || file != file.filename() || file == "." || file == "..") {
    throw CommandError(ToUtf8(PathText(file)) +
                       ": FILE is a name without a folder; its folders are "
                       "DIST_DIR and SERVER_DIR");
  }
  return folder / file;
}

void RequireFolder(const Path& folder) {
  const FileKind kind = KindOf(folder);
  if (kind == FileKind::kFolder) return;
  const String reason = kind == FileKind::kFile ? u"this is not a folder" : FolderErrorText(folder);
  throw CommandError(ToUtf8(PathText(folder) + u": " + reason));
}

int RunConsole(const std::vector<std::string>& arguments, const ConsoleStreams& streams) {
  Arguments parsed;
  const auto app = MakeParser(parsed);
  try {
    app->parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));  // last one first
    RequireCommand(*app);
  } catch (const CLI::ParseError& error) {
    return app->exit(error, streams.out, streams.err) == 0 ? kNothingToDo : kFailure;
  }
  try {
    const int status = RunCommand(*app, parsed, streams);
    streams.out.flush();
    if (streams.out) return status;
    streams.err << "quenmarctl: the output could not be written\n";
  } catch (const EndApplication&) {
    streams.err << "quenmarctl: ended\n";
  } catch (const std::exception& error) {
    streams.err << "quenmarctl: " << PrintableLines(FromUtf8(error.what())) << '\n';
  }
  return kFailure;
}

}  // namespace quenmar
