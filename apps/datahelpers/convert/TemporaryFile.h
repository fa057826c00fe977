#pragma once

#include <string>

#include "convert/Descriptor.h"

namespace App {

/// A file without a name in $TMPDIR, for this user alone: it goes with the program, however that ends.
class TemporaryFile {
public:
    /// An empty file. Throws Failure (ConversionFailed).
    TemporaryFile();

    /// A copy of standard input, read to its end. Throws Failure (WrongUsage) where that is a terminal, and
    /// (ConversionFailed).
    static TemporaryFile OfStandardInput();

    /// A name by which this program and its children can open the file while this lives.
    std::string Path() const;
    /// Copies the whole file there. Throws Failure (ConversionFailed) when that cannot be written.
    void SendToStandardOutput() const;

private:
    Descriptor file_;
};

/// Throws Failure (WrongUsage) where a media file would be shown on a terminal.
void CheckStandardOutput();

}  // namespace App
