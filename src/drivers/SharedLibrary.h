#pragma once

#include <string>
#include <vector>

namespace oriolemark {

// What a library must export: of each row at least one name.
using Exports = std::vector<std::vector<std::string>>;

// A shared library opened at run time. One that does not fit is no failure of the program: it is
// not open, and Reason() says why. The code of an opened library stays mapped until the program
// ends, because drivers leave threads and exit handlers behind.
class SharedLibrary {
 public:
  SharedLibrary() = default;
  // Opens the first of the names that loads and exports all that is asked for. A name with a slash
  // is a path, any other is looked for in the system's library folders.
  SharedLibrary(const std::vector<std::string>& names, const Exports& required);
  ~SharedLibrary();
  SharedLibrary(SharedLibrary&& other) noexcept;
  SharedLibrary& operator=(SharedLibrary&& other) noexcept;

  bool IsOpen() const { return handle_ != nullptr; }
  // The name under which it was found; empty unless it is open.
  const std::string& Name() const { return name_; }
  // Why each name that was tried does not serve, in words; UTF-8.
  const std::string& Reason() const { return reason_; }

  // A function or a variable of the library by its C name; null where there is none. To be used as
  // long as this object holds the library.
  template <typename Symbol>
  Symbol* Find(const char* name) const {
    return reinterpret_cast<Symbol*>(FindAddress(name));
  }

 private:
  std::string TryToOpen(const std::string& name, const Exports& required);
  std::string MissingOf(const Exports& required) const;
  void* FindAddress(const char* name) const;
  void Close();

  void* handle_ = nullptr;
  std::string name_;
  std::string reason_;
};

}  // namespace oriolemark
