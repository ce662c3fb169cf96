#pragma once

#include <cstdio>
#include <dlfcn.h>
#include <stdexcept>
#include <string>

/// A library of the project as a host loads it. Tests that use it don't link the library.
class LoadedLibrary
{
public:
    /// @param fileName without a directory
    explicit LoadedLibrary(std::string const& fileName) : handle(dlopen(pathOf(fileName).c_str(), RTLD_NOW))
    {
        if (handle == nullptr)
            throw std::runtime_error(dlerror());
    }
    ~LoadedLibrary() { dlclose(handle); }

    LoadedLibrary(LoadedLibrary const&) = delete;
    LoadedLibrary& operator=(LoadedLibrary const&) = delete;

    static std::string pathOf(std::string const& fileName) { return VELLOREADER_LIBRARIES + fileName; }

    /// A function by its name in the library.
    template <class Function>
    Function* function(char const* name) const
    {
        void* const symbol = dlsym(handle, name);
        if (symbol == nullptr)
            throw std::runtime_error(dlerror());
        return reinterpret_cast<Function*>(symbol);
    }

private:
    void* handle;
};

/// What a command of the shell prints.
inline std::string outputOf(std::string const& command)
{
    FILE* const pipe = popen(command.c_str(), "r");
    if (pipe == nullptr)
        throw std::runtime_error("cannot run " + command);
    std::string output;
    for (int character; (character = std::fgetc(pipe)) != EOF;)
        output += static_cast<char>(character);
    if (pclose(pipe) != 0)
        throw std::runtime_error("failed: " + command);
    return output;
}
