#pragma once

#include <map>
#include <string>
#include <vector>

namespace App::Catalogue {

/// What was tried with FFmpeg, and what came of it.
struct ProofRow {
    std::string id;         ///< made of the parts of what was tried, for people to read
    std::string about;      ///< what was tried: "pair", "default", "profile"
    std::string container;  ///< the rest are codec ids, or empty
    std::string video;
    std::string audio;
    std::string subtitles;
    std::string result;  ///< "proven", "refused", "no-encoder", "contradicts"
    std::string by;      ///< who said no, or is at fault
    std::string why;
    bool hasSettings = false;  ///< settings differ from the defaults; the id tells them
};

/// A file of such trials: one run, or what there is of it.
struct Proof {
    std::string ffmpeg;
    std::string system;
    std::string date;
    bool isComplete = false;
    std::vector<ProofRow> rows;
};

/// Throws Failure (WrongUsage) with the line for a file that is none.
Proof ReadProof(const std::string& path);

/// Results in the order in which they are told, and what they are in words.
const std::vector<std::pair<std::string, std::string>>& ProofResults();

}  // namespace App::Catalogue
