// A C stream that closes itself.

#ifndef RECALCULO_FILE_STREAM_H
#define RECALCULO_FILE_STREAM_H

#include <cstdio>
#include <memory>

namespace zarven::tool {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

} // namespace zarven::tool

#endif
