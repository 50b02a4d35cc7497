#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <concepts>
#include <cstdint>
#include <cstring>
#include <map>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace importer::plmxml
{

/// Numbers go as they lie in memory: both processes are of one build and on one machine.
template <class T>
concept ReportNumber = std::is_arithmetic_v<T> && !std::same_as<T, bool>;

/// Puts values into bytes, one behind the other. Classes are taken apart by a function `members(bytes, object)`, which
/// serves both directions.
class ReportWriter
{
public:
    /// For templates over both directions.
    static constexpr bool isReading = false;

    /// All that was put in so far.
    const std::string& bytes() const { return m_bytes; }

    /// Puts in each of them.
    template <class... Values>
    void operator()(const Values&... values)
    {
        (put(values), ...);
    }

private:
    void append(const void* data, std::size_t size) { m_bytes.append(static_cast<const char*>(data), size); }

    template <ReportNumber T>
    void put(T value)
    {
        append(&value, sizeof value);
    }
    template <class T>
    requires std::is_enum_v<T>
    void put(T value) { put(static_cast<std::uint8_t>(value)); }
    void put(bool value) { put(static_cast<std::uint8_t>(value)); }
    void put(const std::string& text)
    {
        putSize(text.size());
        append(text.data(), text.size());
    }
    void put(const QString& text)
    {
        putSize(static_cast<std::size_t>(text.size()));
        append(text.constData(), static_cast<std::size_t>(text.size()) * sizeof(QChar));
    }
    void put(const QStringList& texts) { putAll(texts, static_cast<std::size_t>(texts.size())); }
    template <class T>
    void put(const std::vector<T>& values)
    {
        putAll(values, values.size());
    }
    template <class T>
    void put(const std::map<QString, T>& entries)
    {
        putSize(entries.size());
        for (const auto& [key, value] : entries)
            (*this)(key, value);
    }
    template <class T>
    void put(const QHash<QString, T>& entries)
    {
        putSize(static_cast<std::size_t>(entries.size()));
        for (auto entry = entries.begin(); entry != entries.end(); ++entry)
            (*this)(entry.key(), entry.value());
    }
    template <class T>
    requires std::is_class_v<T>
    void put(const T& object) { members(*this, object); }

    template <class List>
    void putAll(const List& values, std::size_t count)
    {
        putSize(count);
        for (const auto& value : values)
            put(value);
    }
    void putSize(std::size_t size) { put(static_cast<std::uint32_t>(size)); }

    std::string m_bytes;
};

/// Takes the same values out of bytes that may come from anybody. After bytes that end too early or hold what no value
/// is, and once all that was made would take more memory than is allowed, it is not sound, and gives nothing more.
class ReportReader
{
public:
    /// For templates over both directions.
    static constexpr bool isReading = true;

    /// Over `bytes`, which must outlive this; what comes of them may take `memory` bytes.
    ReportReader(std::string_view bytes, std::uint64_t memory) : m_bytes(bytes), m_memory(memory) {}

    /// Whether all was sound so far.
    bool isSound() const { return m_isSound; }
    /// Whether nothing is left.
    bool isAtEnd() const { return m_bytes.empty(); }

    /// Takes out each of them; those that cannot be are left as they are.
    template <class... Values>
    void operator()(Values&... values)
    {
        (get(values), ...);
    }

private:
    bool fail()
    {
        m_isSound = false;
        m_bytes = {};
        return false;
    }

    bool take(void* target, std::size_t size)
    {
        if (size > m_bytes.size())
            return fail();
        std::memcpy(target, m_bytes.data(), size);
        m_bytes.remove_prefix(size);
        return true;
    }

    template <ReportNumber T>
    void get(T& value)
    {
        take(&value, sizeof value);
    }
    template <class T>
    requires std::is_enum_v<T>
    void get(T& value)
    {
        std::uint8_t number = 0;
        if (take(&number, 1) && (number <= static_cast<std::uint8_t>(T::Last) || fail()))
            value = static_cast<T>(number);
    }
    void get(bool& value)
    {
        std::uint8_t number = 0;
        if (take(&number, 1) && (number <= 1 || fail()))
            value = number == 1;
    }
    void get(std::string& text)
    {
        if (const std::size_t size = getSize(1, 1)) {
            text.resize(size);
            take(text.data(), size);
        }
    }
    void get(QString& text)
    {
        if (const std::size_t size = getSize(sizeof(QChar), sizeof(QChar))) {
            text.resize(static_cast<int>(size));
            take(text.data(), size * sizeof(QChar));
        }
    }
    void get(QStringList& texts)
    {
        for (std::size_t left = getSize(sizeof(std::uint32_t), sizeof(void*)); left > 0 && m_isSound; --left) {
            texts.append(QString());
            get(texts.last());
        }
    }
    template <class T>
    void get(std::vector<T>& values)
    {
        values.resize(getSize(1, sizeof(T)));
        for (std::size_t i = 0; i < values.size() && m_isSound; ++i)
            get(values[i]);
    }
    template <class T>
    void get(std::map<QString, T>& entries)
    {
        getEntries<T>([&entries](const QString& key, T value) { entries.emplace(key, std::move(value)); });
    }
    template <class T>
    void get(QHash<QString, T>& entries)
    {
        getEntries<T>([&entries](const QString& key, T value) { entries.insert(key, std::move(value)); });
    }
    template <class T>
    requires std::is_class_v<T>
    void get(T& object) { members(*this, object); }

    template <class T, class Insert>
    void getEntries(const Insert& insert)
    {
        constexpr std::size_t memoryOfEntry = 64;
        for (std::size_t left = getSize(1, memoryOfEntry + sizeof(T)); left > 0 && m_isSound; --left) {
            QString key;
            T value{};
            (*this)(key, value);
            insert(key, std::move(value));
        }
    }

    /// A count of things that have so many bytes each at least, and take so much memory; 0 when it cannot be true.
    std::size_t getSize(std::size_t bytesOfEach, std::size_t memoryOfEach)
    {
        std::uint32_t count = 0;
        take(&count, sizeof count);
        const bool isTrue = count <= m_bytes.size() / bytesOfEach && count <= m_memory / memoryOfEach;
        if (!isTrue && !fail())
            return 0;
        m_memory -= count * std::uint64_t(memoryOfEach);
        return count;
    }

    std::string_view m_bytes;
    std::uint64_t m_memory;
    bool m_isSound = true;
};

} // namespace importer::plmxml
