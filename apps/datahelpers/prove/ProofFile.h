#pragma once

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "prove/Proof.h"

namespace App {

/// What a proof was made with.
struct Circumstances {
    std::string ffmpeg;       ///< "5.1.8-0+deb12u1"
    std::string libavformat;  ///< "59.27.100"
    std::string program;      ///< version of this program
    std::string system;       ///< "Debian GNU/Linux 12 (bookworm)"
    std::string date;         ///< "2026-11-22"

    static Circumstances Here();
    /// Of FFmpeg: what reads and writes alike.
    std::string Generation() const;
};

/// What a proof file tells.
struct ProofRecord {
    Circumstances made;
    std::vector<Proof> rows;
    bool isComplete = false;
    double seconds = 0.0;  ///< of a complete one
    std::size_t jobs = 0;  ///< of a complete one

    /// Null: there is none.
    const Proof* Find(const std::string& id) const;
};

/// A file of lines: a header, a row as each is done, and an end. A last line that is cut off counts as not written.
/// Throws Failure (WrongUsage) for what cannot be read, or is no such file.
ProofRecord ReadProof(const std::string& path);

/// Appends to a proof file, line by line.
class ProofWriter {
public:
    /// Makes the file with its header, or goes on behind what record holds. Throws Failure (WrongUsage) where it cannot
    /// be written, and for a record of other circumstances.
    ProofWriter(const std::string& path, const Circumstances& here);
    ~ProofWriter();
    ProofWriter(const ProofWriter&) = delete;
    ProofWriter& operator=(const ProofWriter&) = delete;

    const ProofRecord& Before() const { return before_; }
    /// Throws Failure (ConversionFailed), as the next.
    void Add(const Proof& proof);
    void End(double seconds, std::size_t jobs);

private:
    void Write(const Json& line);

    std::string path_;
    ProofRecord before_;
    std::FILE* file_ = nullptr;
};

}  // namespace App
