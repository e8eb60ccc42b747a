#pragma once

// What the keys of a terminal of type "tmux" send.

#include <string>

inline const std::string kUp = "\033OA";
inline const std::string kDown = "\033OB";
inline const std::string kRight = "\033OC";
inline const std::string kLeft = "\033OD";
inline const std::string kF2 = "\033OQ";
inline const std::string kF3 = "\033OR";
inline const std::string kF4 = "\033OS";
inline const std::string kDelete = "\033[3~";
inline const std::string kCtrlH = "\b";
inline const std::string kEnter = "\r";
// F1, F2 and F5 to F12, which no screen has a use for.
inline const std::string kOtherFunctionKeys =
    "\033OP\033OQ\033[15~\033[17~\033[18~\033[19~\033[20~\033[21~\033[23~\033[24~";

inline std::string Times(int count, const std::string& keys) {
  std::string all;
  while (count-- > 0) all += keys;
  return all;
}
