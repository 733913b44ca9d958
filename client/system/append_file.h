// A file that grows while the work that it tells of is done. append_file_windows.cpp and append_file_native.cpp
// implement it.
#pragma once

#include <string>

namespace tamrix::client {

class AppendFile {
public:
    AppendFile() = default;
    ~AppendFile();
    AppendFile(const AppendFile&) = delete;
    AppendFile& operator=(const AppendFile&) = delete;

    /// Makes a new file; false with the reason, also where there is one.
    bool create(const std::string& path, std::string& reason);
    /// Opens a file that is there, to write at its end.
    bool open(const std::string& path, std::string& reason);
    /// Hands the text to the system, so that it stays when this process is killed. After a failure, which may have
    /// written a part, nothing more is written.
    bool append(const std::string& text, std::string& reason);
    /// Has everything on the disk, so that it stays when the power fails.
    bool flush(std::string& reason);

private:
    bool open(const std::string& path, bool isNew, std::string& reason);

    void* handle_ = nullptr;
    bool hasFailed_ = false;
};

}  // namespace tamrix::client
