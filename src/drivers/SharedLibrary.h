#pragma once

#include <string>
#include <vector>

namespace oriolemark {

// The names that a library must export: at least one of each row.
using Exports = std::vector<std::vector<std::string>>;

// A shared library opened at run time. A library that cannot be used is not open, and Reason()
// returns the cause. The code of an opened library stays mapped until the program ends, because
// drivers leave threads and exit handlers behind.
class SharedLibrary {
 public:
  SharedLibrary() = default;
  // Opens the first library that loads and has all required exports. A name with a slash is a path.
  // Any other name is searched for in the system's library folders.
  SharedLibrary(const std::vector<std::string>& names, const Exports& required);
  ~SharedLibrary();
  SharedLibrary(SharedLibrary&& other) noexcept;
  SharedLibrary& operator=(SharedLibrary&& other) noexcept;

  bool IsOpen() const { return handle_ != nullptr; }
  // The name of the open library. Empty if none is open.
  const std::string& Name() const { return name_; }
  // The reason why each tried name cannot be used. UTF-8.
  const std::string& Reason() const { return reason_; }

  // A function or a variable of the library by its C name. Null if there is none. Valid as long as
  // this object holds the library.
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
