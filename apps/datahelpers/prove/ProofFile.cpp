#include "prove/ProofFile.h"

extern "C" {
#include <libavformat/version.h>
#include <libavutil/avutil.h>
}

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <fstream>
#include <sstream>

#include "Kestro/Planner/Text.h"

#include "cli/Failure.h"

namespace App {
namespace {

using Planner::Printable;

constexpr int kVersion = 1;

std::string SystemName() {
    std::ifstream release("/etc/os-release");
    const std::string key = "PRETTY_NAME=\"";
    for (std::string line; std::getline(release, line);) {
        if (line.starts_with(key)) return line.substr(key.size(), line.rfind('"') - key.size());
    }
    return "unknown";
}

Json HeaderJson(const Circumstances& made) {
    return {{"proof", kVersion},           {"ffmpeg", made.ffmpeg}, {"libavformat", made.libavformat},
            {"datahelpers", made.program}, {"system", made.system}, {"date", made.date}};
}

/// All whole lines.
std::string ReadLines(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    if (file) text << file.rdbuf();
    if (!file)
        throw Failure(ExitStatus::WrongUsage, "Cannot read " + Printable(path) + ": " + std::strerror(errno) + ".");
    std::string lines = text.str();
    lines.resize(lines.rfind('\n') + 1);  // npos + 1 is 0
    return lines;
}

ProofRecord Parse(const std::string& path, const std::string& lines) {
    ProofRecord record;
    std::istringstream text(lines);
    std::size_t number = 0;
    for (std::string line; std::getline(text, line);) {
        ++number;
        const Json json = Json::parse(line, nullptr, false);
        const auto wrong = [&] {
            throw Failure(ExitStatus::WrongUsage,
                          Printable(path) + " is no proof file: see line " + std::to_string(number) + ".");
        };
        if (!json.is_object()) wrong();
        if (number == 1) {
            if (json.value("proof", Json()) != kVersion) wrong();
            const auto text_ = [&json](const char* name) {
                const Json value = json.value(name, Json());
                return value.is_string() ? value.get<std::string>() : std::string();
            };
            record.made = {text_("ffmpeg"), text_("libavformat"), text_("datahelpers"), text_("system"), text_("date")};
        } else if (json.value("end", Json()) == true) {
            record.isComplete = true;
            record.seconds = json.value("seconds", Json(0.0)).get<double>();
            record.jobs = json.value("jobs", Json(0)).get<std::size_t>();
        } else if (const std::optional<Proof> proof = ProofFromJson(json)) {
            record.isComplete = false;
            record.rows.push_back(*proof);
        } else {
            wrong();
        }
    }
    return record;
}

}  // namespace

Circumstances Circumstances::Here() {
    char date[16] = {};
    const std::time_t now = std::time(nullptr);
    std::tm today{};
    localtime_r(&now, &today);
    std::strftime(date, sizeof date, "%Y-%m-%d", &today);
    return {.ffmpeg = av_version_info(),
            .libavformat = AV_STRINGIFY(LIBAVFORMAT_VERSION),
            .program = DATAHELPERS_VERSION,
            .system = SystemName(),
            .date = date};
}

std::string Circumstances::Generation() const { return libavformat.substr(0, libavformat.find('.')); }

const Proof* ProofRecord::Find(const std::string& id) const {
    const auto found = std::ranges::find_if(rows, [&id](const Proof& row) { return row.id == id; });
    return found == rows.end() ? nullptr : &*found;
}

ProofRecord ReadProof(const std::string& path) {
    const std::string lines = ReadLines(path);
    if (lines.empty())
        throw Failure(ExitStatus::WrongUsage, Printable(path) + " is no proof file: there is nothing in it.");
    return Parse(path, lines);
}

ProofWriter::ProofWriter(const std::string& path, const Circumstances& here) : path_(path) {
    const auto unwritable = [&path] {
        throw Failure(ExitStatus::WrongUsage, "Cannot write " + Printable(path) + ": " + std::strerror(errno) + ".");
    };
    before_.made = here;
    struct stat status {};
    if (stat(path.c_str(), &status) == 0 && status.st_size > 0) {
        const std::string lines = ReadLines(path);
        if (!lines.empty()) before_ = Parse(path, lines);
        if (before_.made.ffmpeg != here.ffmpeg || before_.made.program != here.program) {
            throw Failure(
                ExitStatus::WrongUsage,
                Complaint{.message = Printable(path) + " was begun with FFmpeg " + Printable(before_.made.ffmpeg) +
                                     " and version " + Printable(before_.made.program) + " of this program.",
                          .wayOut = "another file"});
        }
        if (truncate(path.c_str(), static_cast<off_t>(lines.size())) != 0) unwritable();
    }
    file_ = std::fopen(path.c_str(), "ae");
    if (file_ == nullptr) unwritable();
    if (before_.rows.empty() && std::ftell(file_) == 0) Write(HeaderJson(here));
}

ProofWriter::~ProofWriter() {
    if (file_ != nullptr) std::fclose(file_);
}

void ProofWriter::Add(const Proof& proof) { Write(ToJson(proof)); }

void ProofWriter::End(double seconds, std::size_t jobs) {
    Write({{"end", true}, {"seconds", seconds}, {"jobs", jobs}});
}

void ProofWriter::Write(const Json& line) {
    const std::string text = line.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
    if (std::fwrite(text.data(), 1, text.size(), file_) == text.size() && std::fflush(file_) == 0) return;
    throw Failure(ExitStatus::ConversionFailed, "Cannot write " + Printable(path_) + ": " + std::strerror(errno) + ".");
}

}  // namespace App
