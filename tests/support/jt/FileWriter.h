#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace jttest
{

using Id = std::int32_t;
using Ids = std::vector<Id>;
using Data = std::vector<std::uint8_t>;

/// What every node may have.
struct NodeOptions {
    Ids attributes;
    bool isIgnored = false;
};

/// Writes small JT files element by element, as the layouts of the versions 8, 9 and 10 want them, in either byte order
/// and without packing anything. Numbers of elements are the caller's to choose, and may lead nowhere or round in
/// circles; the first node is the root. Numbers from 10000 on are the writer's own.
class FileWriter
{
public:
    explicit FileWriter(int major = 8, bool isBigEndian = false) : m_major(major), m_big(isBigEndian) {}

    void partition(Id id, const Ids& children, const std::string& file = {}, const NodeOptions& options = {});
    void metadata(Id id, const Ids& children, const NodeOptions& options = {});
    void part(Id id, const Ids& children, const NodeOptions& options = {});
    void group(Id id, const Ids& children, const NodeOptions& options = {});
    void instance(Id id, Id child, const NodeOptions& options = {});
    void levels(Id id, const Ids& children, const NodeOptions& options = {});
    void choice(Id id, const Ids& children, std::int32_t selected, const NodeOptions& options = {});
    void shape(Id id, const NodeOptions& options = {});
    /// A group of a kind that nobody knows.
    void unknownGroup(Id id, const Ids& children);

    /// A shape of version 8 with one triangle whose legs, along x and y from the origin, are `size` long.
    void triangle(Id id, float size, const NodeOptions& options = {});
    /// A shape whose segment holds an element of this type with the bytes of `object`, which are of the file's version.
    void mesh(Id id, const std::string& type, const Data& object, const NodeOptions& options = {});
    /// A triangle with a mesh that ends after its first numbers.
    void brokenTriangle(Id id, const NodeOptions& options = {});

    void material(Id id, const std::array<float, 4>& diffuse, unsigned state = 8, std::uint32_t inhibited = 0,
                  int dataFlags = 0);
    /// Version 8 with ambient, emission and specular in their short forms.
    void shortMaterial(Id id, const std::array<float, 4>& diffuse);
    /// A picture for materials, with nothing in it.
    void texture(Id id);
    void move(Id id, double x, double y, double z);
    /// Elements of the placement by their number, 0 to 15.
    void transform(Id id, const std::map<unsigned, double>& elements, unsigned state = 8);

    void property(Id node, const std::string& key, const std::string& value);
    void integerProperty(Id node, const std::string& key, std::int32_t value);
    void floatProperty(Id node, const std::string& key, float value);
    void dateProperty(Id node, const std::string& key, const std::array<int, 6>& parts);
    /// Gives `node` the numbers of atoms that may not be there.
    void rawProperty(Id node, Id key, Id value);
    /// Gives `node` a segment of the number `segment`, which need not be in the file.
    void late(Id node, const std::string& key, unsigned segment, int type);
    /// Gives `node` what a metadata segment says: texts by their keys.
    void metadataSegment(Id node, const std::map<std::string, std::string>& texts);
    /// A segment of this type, without anything in it, that nothing refers to.
    void emptySegment(int type) { m_segments.push_back({m_nextSegment++, type, {}}); }

    /// An element among the nodes whose data ends too early.
    void cutOffGroup(Id id);

    /// The unpacked scene graph segment.
    Data sceneGraph() const;
    /// The whole file.
    std::string file() const;

private:
    /// Bytes in the order of the file.
    struct Out {
        bool isBig;
        Data data;

        void put(std::uint64_t value, int bytes);
        void u8(unsigned value) { put(value, 1); }
        void i16(int value) { put(static_cast<std::uint16_t>(value), 2); }
        void i32(std::int64_t value) { put(static_cast<std::uint32_t>(value), 4); }
        void f32(double value);
        void f64(double value);
        void ids(const Ids& ids);
        void text(const std::string& utf8);
        void guid(const std::string& text);
        void zeros(int bytes) { data.insert(data.end(), static_cast<std::size_t>(bytes), 0); }
    };
    struct Segment {
        unsigned number;
        int type;
        Data data;
    };

    Out out() const { return {m_big, {}}; }
    void version(Out& to) const;
    void fixedVersion(Out& to) const;
    Out baseNode(Id id, const NodeOptions& options) const;
    Out groupNode(Id id, const Ids& children, const NodeOptions& options) const;
    Out baseAttribute(Id id, unsigned state, std::uint32_t inhibited) const;
    Out atom(Id id) const;
    Data element(const std::string& guid, int base, const Data& data) const;
    Data endMark() const;
    void add(Data& list, const std::string& guid, int base, const Data& data);
    Id textAtom(const std::string& text);
    void pair(Id node, Id key, Id value) { m_table[node].push_back({key, value}); }
    Data triangleObject(float size) const;
    Data withPackingHead(const Data& data) const;
    std::string segmentGuid(unsigned number) const;

    int m_major;
    bool m_big;
    Data m_nodes;
    Data m_atoms;
    std::map<Id, std::vector<std::pair<Id, Id>>> m_table;
    std::vector<Segment> m_segments;
    Id m_nextAtom = 10000;
    unsigned m_nextSegment = 100;
};

} // namespace jttest
