#pragma once

#include <string>

#include "convert/Descriptor.h"

namespace App {

/// A file without a name in $TMPDIR, for this user alone: it goes with the program, however that ends.
class TemporaryFile {
public:
    /// Empty. Throws Failure (ConversionFailed).
    TemporaryFile();

    /// What comes by standard input, to its end. Throws Failure (WrongUsage) where that is a terminal, and
    /// (ConversionFailed).
    static TemporaryFile OfStandardInput();

    /// By which programs that this one starts open it, too, as long as it lives.
    std::string Path() const;
    /// All of it. Throws Failure (ConversionFailed) when nobody takes it.
    void SendToStandardOutput() const;

private:
    Descriptor file_;
};

/// Throws Failure (WrongUsage) where a media file would be shown on a terminal.
void CheckStandardOutput();

}  // namespace App
