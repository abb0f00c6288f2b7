// SPDX-License-Identifier: MIT
// Steps through chunks and their parts.
#include "object_reading.h"

#include <bit>
#include <map>
#include <stdexcept>

namespace {

void require(bool condition, const char *what) {
    if (!condition) {
        throw std::runtime_error(what);
    }
}

/// A part of a file, read from front to back.
class Reader {
public:
    explicit Reader(std::string part) : bytes(std::move(part)) {}

    bool is_at_end() const { return at == bytes.size(); }

    std::string take(std::size_t count) {
        require(count <= bytes.size() - at, "a part is too short");
        at += count;
        return bytes.substr(at - count, count);
    }
    std::uint32_t number(std::size_t width) {
        std::uint32_t value = 0;
        for (const char byte : take(width)) {
            value = value << 8 | static_cast<unsigned char>(byte);
        }
        return value;
    }
    float coordinate() { return std::bit_cast<float>(number(4)); }
    int word() { return static_cast<int>(number(2)); }
    /// Up to a zero byte; the zeros make the length even.
    std::string name() {
        const std::size_t end = bytes.find('\0', at);
        require(end != std::string::npos, "a name has no end");
        std::string text = take(end - at);
        take(text.size() % 2 == 0 ? 2 : 1);
        return text;
    }

private:
    std::string bytes;
    std::size_t at = 0;
};

void read_polygons(Reader part, ReadObject &object) {
    while (!part.is_at_end()) {
        ReadPolygon polygon{};
        const int count = part.word();
        for (int i = 0; i < count; ++i) {
            polygon.corners.push_back(part.word());
            require(polygon.corners.back() < std::ssize(object.points), "a point does not exist");
        }
        polygon.surface = part.word();
        object.polygons.push_back(polygon);
    }
}

void read_surface(Reader part, ReadSurface &surface) {
    while (!part.is_at_end()) {
        const std::string id = part.take(4);
        Reader value(part.take(part.number(2)));
        if (id == "COLR") {
            surface.colour = {static_cast<int>(value.number(1)), static_cast<int>(value.number(1)),
                              static_cast<int>(value.number(1))};
        } else if (id == "FLAG") {
            surface.flags = value.word();
        }
    }
}

} // namespace

ReadObject parse_object(const std::string &bytes) {
    ReadObject object;
    std::map<std::string, std::size_t> places;
    Reader file(bytes);
    require(file.take(4) == "FORM" && file.number(4) == bytes.size() - 8 && file.take(4) == "LWOB",
            "not a form LWOB of the file's size");
    while (!file.is_at_end()) {
        const std::string id = file.take(4);
        const std::size_t size = file.number(4);
        require(size % 2 == 0, "an odd size");
        Reader part(file.take(size));
        object.chunks.push_back(id);
        if (id == "PNTS") {
            while (!part.is_at_end()) {
                const float x = part.coordinate();
                const float y = part.coordinate();
                object.points.push_back({x, y, part.coordinate()});
            }
        } else if (id == "SRFS") {
            while (!part.is_at_end()) {
                object.surfaces.push_back({part.name()});
                const bool is_new =
                    places.emplace(object.surfaces.back().name, object.surfaces.size() - 1).second;
                require(is_new, "two surfaces of one name");
            }
        } else if (id == "POLS") {
            read_polygons(part, object);
        } else if (id == "SURF") {
            const auto place = places.find(part.name());
            require(place != places.end(), "a surface is not in the list");
            read_surface(part, object.surfaces[place->second]);
        }
    }
    for (const ReadPolygon &polygon : object.polygons) {
        require(polygon.surface >= 1 && polygon.surface <= std::ssize(object.surfaces), "no such surface");
    }
    return object;
}
