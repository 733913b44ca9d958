// A file to which text is appended, and which keeps that text if the process is killed or the power fails.
// append_file_windows.cpp and append_file_native.cpp implement it.
#pragma once

#include <string>

namespace tamrix::client {

class AppendFile {
public:
    AppendFile() = default;
    ~AppendFile();
    AppendFile(const AppendFile&) = delete;
    AppendFile& operator=(const AppendFile&) = delete;

    /// Creates a new file; false with the reason on failure, also if the file exists.
    bool create(const std::string& path, std::string& reason) { return open(path, true, reason); }
    /// Opens an existing file for writing at its end; false with the reason on failure.
    bool open(const std::string& path, std::string& reason) { return open(path, false, reason); }
    /// Passes the text to the system, so that it is not lost if this process is killed. A failed call may have written
    /// part of the text; later calls then write nothing.
    bool append(const std::string& text, std::string& reason);
    /// Flushes the file to the disk, so that it is not lost if the power fails.
    bool flush(std::string& reason);

private:
    bool open(const std::string& path, bool isNew, std::string& reason);

    void* handle_ = nullptr;
    bool hasFailed_ = false;
};

}  // namespace tamrix::client
