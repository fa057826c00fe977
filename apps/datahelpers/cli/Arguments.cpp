#include "cli/Arguments.h"

#include <algorithm>
#include <CLI/CLI.hpp>
#include <iostream>
#include <string_view>

#include "Kestro/Planner/FileNames.h"
#include "Kestro/Planner/Text.h"

#include "cli/Failure.h"
#include "cli/HelpPages.h"
#include "cli/PlanArguments.h"
#include "cli/PresetFile.h"

namespace App {
namespace {

constexpr const char* kFooter =
    "Exit status: 0 done, 1 the conversion failed, 2 wrong usage or unreadable input, 3 a preset or setting that is "
    "not acceptable; 128 and its number for a signal: 130 for Ctrl-C.\nA file whose name begins with - goes behind --: "
    "datahelpers plan --format mp4 -- -clip.mkv";

/// The kind that the word names, in either number; null when it names none.
const Planner::HelperKind* FindKind(const std::string& word) {
    const auto kinds = Planner::HelperKinds();
    const auto found = std::ranges::find_if(
        kinds, [&word](const Planner::HelperKind* kind) { return word == kind->name || word == kind->plural; });
    if (found != kinds.end()) return *found;
    // audio and video have one form for both.
    if (word == "audios") return &Planner::kAudioCodecs;
    if (word == "videos") return &Planner::kVideoCodecs;
    return nullptr;
}

const Planner::HelperKind& ReadKind(const std::string& word) {
    if (const Planner::HelperKind* kind = FindKind(word)) return *kind;
    std::vector<std::string> names;
    for (const Planner::HelperKind* kind : Planner::HelperKinds()) names.emplace_back(kind->plural);
    throw Failure(ExitStatus::WrongUsage,
                  Complaint{.message = "\"" + Planner::Printable(word) + "\" is no kind of helper." +
                                       Planner::DidYouMean(word, names),
                            .value = word,
                            .allowed = names});
}

/// Tells input and output apart among the files that convert is given.
void TakeFiles(Arguments& arguments) {
    std::vector<std::string>& files = arguments.inputs;
    if (!arguments.into.empty()) {
        if (!arguments.isSequence) return;
        throw Failure(ExitStatus::WrongUsage, "--into makes a file of each input, --sequence a folder of one.");
    }
    const std::size_t least = arguments.plan.planFile.empty() ? 2 : 1;
    if (files.size() < least) throw Failure(ExitStatus::WrongUsage, "OUTPUT is required.");
    if (files.size() > 2) {
        throw Failure(ExitStatus::WrongUsage,
                      Complaint{.message = "One INPUT makes one OUTPUT.", .wayOut = "--into FOLDER for many"});
    }
    arguments.output = files.back();
    if (files.size() == 2) arguments.plan.input = files.front();
    if (arguments.output != kStandardStream) return;
    if (arguments.json || arguments.isSequence) {
        throw Failure(ExitStatus::WrongUsage,
                      "Standard output takes the file and nothing else: neither --json nor "
                      "--sequence goes with it.");
    }
}

void AddProveOptions(CLI::App& command, ProveOptions& options) {
    command
        .add_option("-o,--output", options.file,
                    "Append each row to this file as it is done; what is in it already is not done again")
        ->type_name("FILE");
    command.add_option("--jobs", options.jobs, "So many rows at once; without it as many as there are cores")
        ->type_name("N")
        ->check(CLI::Range(1, 256));
    command.add_option("--timeout", options.timeout, "The longest that a row may take, in seconds")
        ->type_name("S")
        ->check(CLI::Range(1, 3600))
        ->capture_default_str();
    command.add_flag("--sample", options.isSample, "A few rows that touch every container, encoder and filter");
    command.add_option("--only", options.only, "Rows whose name has this text. May be repeated")
        ->type_name("TEXT")
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false);
    command
        .add_option("--against", options.against,
                    "Proof files: fail where something that the one of this generation of FFmpeg calls proven is not")
        ->type_name("FILE");
    auto* page = command.add_option("--page", options.pages, "Print a page, in Markdown, of these proof files")
                     ->type_name("FILE");
    command.add_option("--explained", options.explained, "With --page: a JSON file that explains contradictions")
        ->type_name("FILE")
        ->needs(page);
    for (const char* name : {"--output", "--jobs", "--sample", "--only", "--against"}) {
        page->excludes(command.get_option(name));
    }
}

void AddCatalogueOptions(CLI::App& command, Arguments& arguments) {
    command.add_option("-o,--output", arguments.output, "The folder: new, empty, or with a catalogue in it")
        ->type_name("FOLDER")
        ->required();
    command.add_option("--proof", arguments.proofFile, "Also show what was tried with FFmpeg, a file that prove wrote")
        ->type_name("FILE");
    command.add_flag("--overwrite", arguments.overwrite,
                     "Write into a folder with other things; of these, what bears the same names is replaced");
}

}  // namespace

bool AsksForJson(int count, const char* const* values) {
    for (int i = 1; i < count && std::string_view(values[i]) != "--"; ++i) {
        if (std::string_view(values[i]) == "--json") return true;
    }
    return false;
}

bool ParseArguments(int count, const char* const* values, Arguments& arguments) {
    CLI::App app("Tells what containers, encoders and filters accept, plans conversions and carries them out.",
                 "datahelpers");
    app.footer(kFooter);
    app.set_version_flag("--version", "datahelpers " DATAHELPERS_VERSION);
    app.require_subcommand(1);

    CLI::App* list = app.add_subcommand("list", "List containers, codecs and filters");
    std::string kind;
    list->add_option("KIND", kind, "formats, audio, video, filters or presets; all without it");

    CLI::App* show = app.add_subcommand("show", "Show defaults, accepted values and rules of one of them");
    show->add_option("KIND", kind, "format, audio, video or filter")->required();
    show->add_option("NAME", arguments.name, "As list has it")->required();
    show->add_flag("--auto", arguments.isAutomatic, "Also what is accepted where a choice is left to the program");

    CLI::App* fits = app.add_subcommand("fits", "Tell whether a container stores a codec");
    auto* codec = fits->add_option("CODEC", arguments.codec, "As list has it, or another codec by FFmpeg's name");
    auto* container = fits->add_option("CONTAINER", arguments.container, "As list has it");
    fits->add_option("--codec", arguments.codec, "In all containers")->type_name("CODEC")->excludes(codec);
    fits->add_option("--format", arguments.container, "All codecs in it")->type_name("FORMAT")->excludes(container);

    CLI::App* schema =
        app.add_subcommand("schema", "Print a JSON Schema of presets, for editors that complete and check");
    schema->add_option("FORMAT", arguments.container, "The container, as list has it; any without it");

    CLI::App* check = app.add_subcommand("check", "Tell everything that is wrong with a preset");
    check->add_option("PRESET", arguments.plan.presetFile, "A file, or a name that list presets has")->required();
    check->add_option("INPUT", arguments.plan.input, "The media file that it is for; a usual film stands for it");

    CLI::App* plan = app.add_subcommand("plan", "Show the settings of a conversion and every correction");
    plan->add_option("INPUT", arguments.plan.input, "The media file to convert")->required();
    AddPlanOptions(*plan, arguments.plan);

    plan->add_option("OUTPUT", arguments.output, "What convert would write; its name may tell the container");
    plan->add_flag("--commands", arguments.showsCommands,
                   "Print the command lines of ffmpeg for OUTPUT, ready for a shell");
    plan->add_flag("--strict", arguments.isStrict, "Refuse what would have to be corrected");
    plan->add_flag("--full", arguments.isFull, "Also print the whole tree of settings");

    CLI::App* convert = app.add_subcommand("convert", "Convert a file");
    AddPlanOptions(*convert, arguments.plan);
    convert
        ->add_option(
            "FILES", arguments.inputs,
            "INPUT OUTPUT: the media file, and the file to write, which appears when it is complete; - is standard "
            "input "
            "or output; with --into any number of inputs; with --plan OUTPUT, or INPUT OUTPUT for another place of the "
            "input")
        ->required();
    auto* into = convert
                     ->add_option("--into", arguments.into,
                                  "Convert every file into this folder; those that are there and newer are done")
                     ->type_name("FOLDER");
    convert->add_option("--jobs", arguments.jobs, "With --into: so many at once")
        ->type_name("N")
        ->check(CLI::Range(1, 256))
        ->needs(into);
    auto* planFile = convert->add_option("--plan", arguments.plan.planFile, "Carry out what plan --json has reported")
                         ->type_name("FILE")
                         ->excludes(into);
    into->excludes(convert->get_option("--fps"));
    for (const char* name : {"--preset", "--format", "--video", "--audio", "--audio-tracks", "--subtitles",
                             "--keep-fields", "--size", "--set", "--fps", "--follow-references"})
        planFile->excludes(convert->get_option(name));

    convert->add_flag("--overwrite", arguments.overwrite, "Replace OUTPUT if it is there already");
    convert->add_flag("--quiet", arguments.isQuiet, "Say nothing but what went wrong");
    convert->add_flag("--sequence", arguments.isSequence, "All pictures of the input, into the new folder OUTPUT");

    CLI::App* prove =
        app.add_subcommand("prove", "Convert a short clip into everything that is offered, and look at it");
    AddProveOptions(*prove, arguments.prove);

    CLI::App* catalogue = app.add_subcommand("catalogue", "Write all that is known as a folder of pages");
    AddCatalogueOptions(*catalogue, arguments);

    for (CLI::App* command : {list, show, fits, schema, check, plan, convert, prove, catalogue}) {
        command->add_flag("--json", arguments.json, "Report in JSON on standard output");
    }

    // "help convert" asks for what "convert --help" does.
    const std::string word = count < 2 ? std::string() : values[1];
    if (word == "help" && count <= 3) {
        const char* const ask[] = {values[0], count == 3 ? values[2] : "--help", "--help"};
        return ParseArguments(count, ask, arguments);
    }
    if (word == kManualCommand || word == kCompleteCommand) {
        if (word == kManualCommand) PrintManual(std::cout, app);
        if (word == kCompleteCommand) PrintCompletions(std::cout, app, {values + 2, values + count});
        return false;
    }
    std::vector<std::string> commands;
    for (const CLI::App* command : app.get_subcommands({})) commands.push_back(command->get_name());
    if (std::ranges::find(commands, word) != commands.end()) {
        arguments.commandName = word;
    } else if (!word.starts_with('-')) {
        throw Failure(ExitStatus::WrongUsage,
                      Complaint{.message = word.empty() ? "A command is required."
                                                        : "There is no command \"" + Planner::Printable(word) + "\"." +
                                                              Planner::DidYouMean(word, commands),
                                .allowed = commands,
                                .wayOut = "datahelpers --help"});
    }
    try {
        app.parse(count, values);
    } catch (const CLI::Success& asked) {  // --help, --version
        app.exit(asked);
        return false;
    } catch (const CLI::ParseError& error) {
        throw Failure(ExitStatus::WrongUsage, Complaint{.message = Planner::Printable(error.what()) + ".",
                                                        .wayOut = "datahelpers --help, or datahelpers COMMAND --help"});
    }

    if (list->parsed()) {
        arguments.command = Command::List;
        arguments.listsHelpers = kind != "presets";
        arguments.listsPresets = kind.empty() || kind == "presets";
        if (!kind.empty() && arguments.listsHelpers) arguments.kind = &ReadKind(kind);
    } else if (show->parsed()) {
        arguments.command = Command::Show;
        arguments.kind = &ReadKind(kind);
    } else if (fits->parsed()) {
        arguments.command = Command::Fits;
        if (arguments.codec.empty() && arguments.container.empty()) {
            throw Failure(ExitStatus::WrongUsage,
                          Complaint{.message = "A codec or a container is required.",
                                    .wayOut = "CODEC CONTAINER, --codec CODEC or --format FORMAT"});
        }
    } else if (catalogue->parsed()) {
        arguments.command = Command::Catalogue;
    } else if (schema->parsed()) {
        arguments.command = Command::Schema;
    } else if (check->parsed()) {
        arguments.command = Command::Check;
        arguments.plan.presetFile = FindPreset(arguments.plan.presetFile);
    } else if (prove->parsed()) {
        arguments.command = Command::Prove;
    } else {
        arguments.command = plan->parsed() ? Command::Plan : Command::Convert;
        if (convert->parsed()) TakeFiles(arguments);
        std::string& preset = arguments.plan.presetFile;
        if (!preset.empty()) preset = FindPreset(preset);
        const bool isOpen = preset.empty() && arguments.plan.planFile.empty();
        if (isOpen && arguments.plan.format.empty() && arguments.into.empty()) {
            arguments.plan.format = Planner::ContainerOfFileName(arguments.output);
        }
        if (isOpen && arguments.plan.format.empty()) {
            throw Failure(
                ExitStatus::WrongUsage,
                Complaint{
                    .message = "A preset or a format is required.",
                    .wayOut = "--preset PRESET or --format FORMAT, or an output whose name ends in one (film.mp4)"});
        }
    }
    if (arguments.showsCommands && arguments.output.empty()) {
        throw Failure(ExitStatus::WrongUsage, Complaint{.message = "The command lines are for an output.",
                                                        .wayOut = "plan INPUT OUTPUT --commands"});
    }
    if (arguments.showsCommands && (arguments.plan.input == kStandardStream || arguments.output == kStandardStream)) {
        throw Failure(ExitStatus::WrongUsage, "The command lines are for files that have names.");
    }
    return true;
}

}  // namespace App
