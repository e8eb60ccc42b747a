// Feeds the store with lines and whole files and compares what it makes of them with a plain model
// of the format. Works on kFile, in the current directory, and as root only.

#undef NDEBUG
#include <cassert>
#include <sstream>
#include <string>
#include <vector>

#include "config/config_file.h"
#include "config/evseccfg.h"
#include "support/store.h"

using Record = std::pair<std::string, std::string>;  // both masks with their comma; mode

static std::vector<Record> ModelRead(const std::string& text) {
  std::vector<Record> records;
  for (std::size_t at = 0, length = 0; at < text.size(); at += length) {
    length = std::min({text.find('\n', at), text.size() - 1, at + 254}) + 1 - at;
    std::string line = text.substr(at, length).c_str();  // NOLINT: a zero byte ends it
    while (!line.empty() && static_cast<unsigned char>(line.back()) <= ' ') line.pop_back();
    line.erase(0, line.find_first_not_of(' '));
    if (!line.starts_with("-n=")) continue;
    std::istringstream fields(line.substr(3));
    std::string part[3];
    std::getline(std::getline(std::getline(fields, part[0], ','), part[1], ','), part[2]);
    records.emplace_back(part[0].substr(0, 64) + ',' + part[1].substr(0, 32), part[2].substr(0, 1));
  }
  return records;
}

static std::string ModelText(const std::vector<Record>& records) {
  std::string text = kComments;
  for (const auto& [masks, mode] : records) text += "-n=" + masks + "," + mode + "\n";
  return text;
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  const std::string text(data, data + size);
  WriteFile(kFile, text);
  assert(WLNSWriteRecs(WLNSGetAllRecs()) == 0 && ReadFile(kFile) == ModelText(ModelRead(text)));
  return 0;
}
