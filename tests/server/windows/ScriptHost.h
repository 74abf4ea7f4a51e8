// ScriptHost: runs a script in the system's own engine, as a program with scripts of its users would.
//
// A script may call
//   Equal actual, expected, what     notes a difference
//   Watch(object, prefix)            calls <prefix>_<Event> of the script at each event; returns a number
//   Unwatch number                   ends that
//   NewObject(name)                  creates as CreateObject does, which keeps a class factory under Wine
//   Typed(object, name)              the object with type information that calls its interface so
//   Finished                         the last line: without it the script counts as broken off
#pragma once

#include <string>

namespace zelUtilities {

struct ScriptOutcome {
  int checks = 0;
  bool isFinished = false;
  std::string complaints;  // differences and script errors, one a line
};

// The script lies in the folder scripts beside the program; its ending names the engine.
ScriptOutcome runScript(const std::wstring& name);

}  // namespace zelUtilities
