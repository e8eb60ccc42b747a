// Feeds the store with lines and whole files and compares what it makes of them with a plain model
// of the format. Works on kFile, in the current directory, and as root only.

#undef NDEBUG
#include <cassert>
#include <sstream>
#include <string>

#include "config/config_file.h"
#include "config/evseccfg.h"
#include "support/store.h"

// The text after it was read and written once.
static std::string Rewritten(const std::string& text) {
  std::string result = kComments;
  for (std::size_t at = 0, length = 0; at < text.size(); at += length) {
    length = std::min({text.find('\n', at), text.size() - 1, at + 254}) + 1 - at;
    std::string line = text.substr(at, length).c_str();  // NOLINT: a zero byte ends it
    while (!line.empty() && static_cast<unsigned char>(line.back()) <= ' ') line.pop_back();
    line.erase(0, line.find_first_not_of(' '));
    if (!line.starts_with("-n=")) continue;
    std::istringstream fields(line.substr(3));
    std::string part[3];  // both masks, the mode with what follows
    std::getline(std::getline(std::getline(fields, part[0], ','), part[1], ','), part[2]);
    result += "-n=" + part[0].substr(0, 64) + ',' + part[1].substr(0, 32) + ',' +
              part[2].substr(0, 1) + '\n';
  }
  return result;
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  const std::string text(data, data + size);
  WriteFile(kFile, text);
  assert(WLNSWriteRecs(WLNSGetAllRecs()) == 0 && ReadFile(kFile) == Rewritten(text));
  return 0;
}
