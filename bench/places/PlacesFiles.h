#pragma once

#include <filesystem>
#include <string>

/// A folder of files that place one small part, or a few, very often; it goes with the program.
class PlacesFiles
{
public:
    explicit PlacesFiles(int places);
    PlacesFiles(const PlacesFiles&) = delete;
    PlacesFiles& operator=(const PlacesFiles&) = delete;
    ~PlacesFiles();

    /// Groups of a hundred instances of a hundred parts in STL files, each with a place of its own.
    std::string plmxml() const;
    /// A box with a name at each place.
    std::string step() const;
    /// A triangle with a placement at each place.
    std::string jt() const;

    std::string path(const std::string& name) const { return (m_folder / name).string(); }
    int places() const { return m_places; }

private:
    std::string write(const std::string& name, const std::string& text) const;

    int m_places;
    std::filesystem::path m_folder;
};
