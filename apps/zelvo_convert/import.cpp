// SPDX-License-Identifier: MIT
// Walks over assimp's tree of nodes. Its axes are right-handed, x right, y up, z towards the viewer, and
// corners run anticlockwise as seen from outside.
#include "import.h"

#include "messages.h"
#include "object_import.h"
#include "platform/posix/object_form.h"
#include "shared/child_process.h"

#include <algorithm>
#include <array>
#include <assimp/DefaultIOSystem.h>
#include <assimp/Importer.hpp>
#include <assimp/ProgressHandler.hpp>
#include <assimp/importerdesc.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <cmath>
#include <map>
#include <set>
#include <sstream>
#include <string_view>
#include <utility>

namespace convert {

namespace {

/// Reports the other files that assimp opens for a model, such as a list of materials, and those that it
/// looks for in vain.
class Files : public Assimp::DefaultIOSystem {
public:
    explicit Files(std::string model_path) : path(std::move(model_path)) {}

    Assimp::IOStream *Open(const char *file, const char *mode) override {
        if (file != path) {
            send_to_parent(other_file_message, file);
        }
        return DefaultIOSystem::Open(file, mode);
    }

private:
    std::string path;
};

/// How much of the work is done after reading, in percent.
constexpr int reading_percent = 50;

class Progress : public Assimp::ProgressHandler {
public:
    bool Update(float part) override {
        const int percent = std::clamp(static_cast<int>(part * reading_percent), 0, reading_percent);
        if (percent > last_percent) {
            last_percent = percent;
            send_progress(percent);
        }
        return true;
    }

private:
    int last_percent = 0;
};

/// The suffixes, as assimp has them, of formats whose models usually have z up and that assimp leaves so. It
/// turns the models of many others itself. Quick3D and XGL are not here: their models differ.
constexpr std::array<std::string_view, 6> formats_with_z_up{"stl", "3mf", "amf", "dxf", "cob", "smd"};

/// The axis that the file itself names, or the usual one of its format.
Up up_axis_of(const aiScene &scene, const aiImporterDesc *format) {
    constexpr int z_axis = 2;
    if (int axis = 0; scene.mMetaData != nullptr && scene.mMetaData->Get("UpAxis", axis)) {
        return axis == z_axis ? Up::z : Up::y;
    }
    std::istringstream suffixes(format != nullptr ? format->mFileExtensions : "");
    std::string suffix;
    while (suffixes >> suffix) {
        if (std::ranges::find(formats_with_z_up, suffix) != formats_with_z_up.end()) {
            return Up::z;
        }
    }
    return Up::y;
}

/// The nodes' transforms into the axes of the scene.
using Transforms = std::map<const aiNode *, aiMatrix4x4>;

Transforms transforms_of(const aiScene &scene) {
    Transforms transforms{{scene.mRootNode, scene.mRootNode->mTransformation}};
    std::vector<const aiNode *> open{scene.mRootNode};
    while (!open.empty()) {
        const aiNode *node = open.back();
        open.pop_back();
        for (unsigned i = 0; i < node->mNumChildren; ++i) {
            const aiNode *child = node->mChildren[i];
            transforms[child] = transforms[node] * child->mTransformation;
            open.push_back(child);
        }
    }
    return transforms;
}

/// Adds the meshes of all nodes to one.
class Merger {
public:
    Merger(const aiScene &merged_scene, Up up_axis, Model &merged_model)
        : scene(merged_scene), up(up_axis), model(merged_model), transforms(transforms_of(scene)) {}

    void add_all() {
        std::vector<const aiNode *> open{scene.mRootNode};
        while (!open.empty()) {
            const aiNode *node = open.back();
            open.pop_back();
            for (unsigned i = 0; i < node->mNumMeshes; ++i) {
                if (node->mMeshes[i] < scene.mNumMeshes) {
                    add(*scene.mMeshes[node->mMeshes[i]], transforms.at(node));
                }
            }
            // The last child is taken first, so they are pushed in reverse.
            for (unsigned i = node->mNumChildren; i > 0; --i) {
                open.push_back(node->mChildren[i - 1]);
            }
        }
    }

private:
    void add(const aiMesh &mesh, const aiMatrix4x4 &transform) {
        const auto first_point = static_cast<std::uint32_t>(model.mesh.points.size());
        if (mesh.mNumVertices > UINT32_MAX - first_point) {
            refuse("it has too many points");
        }
        // 0 - z instead of -z, so that 0 stays positive.
        for (const aiVector3D &point : places(mesh, transform)) {
            model.mesh.points.push_back(up == Up::z ? Vec3{point.x, point.z, point.y}
                                                    : Vec3{point.x, point.y, 0.0F - point.z});
        }
        // Either change of axes mirrors the model, and so does a transform with a negative determinant.
        const bool is_reversed = transform.Determinant() >= 0;
        std::uint32_t surface = 0;
        std::vector<std::uint32_t> indices;
        for (unsigned i = 0; i < mesh.mNumFaces; ++i) {
            const aiFace &face = mesh.mFaces[i];
            if (face.mNumIndices < 3) {
                model.lines += face.mNumIndices == 2 ? 1 : 0;
                model.single_points += face.mNumIndices == 1 ? 1 : 0;
                continue;
            }
            indices.assign(face.mIndices, face.mIndices + face.mNumIndices);
            if (*std::ranges::max_element(indices) >= mesh.mNumVertices) {
                ++model.broken_faces;
                continue;
            }
            for (std::uint32_t &index : indices) {
                index += first_point;
            }
            if (is_reversed) {
                std::reverse(indices.begin() + 1, indices.end());
            }
            surface = surface != 0 ? surface : surface_of(mesh.mMaterialIndex) + 1;
            model.mesh.add_face(indices, surface - 1);
        }
    }

    /// Where the points of a mesh are in the scene. Bones move those of a mesh that has some.
    std::vector<aiVector3D> places(const aiMesh &mesh, const aiMatrix4x4 &transform) const {
        std::vector<aiVector3D> points(mesh.mVertices, mesh.mVertices + mesh.mNumVertices);
        if (!mesh.HasBones()) {
            for (aiVector3D &point : points) {
                point *= transform;
            }
            return points;
        }
        std::vector<aiVector3D> sums(points.size());
        std::vector<ai_real> weights(points.size());
        for (unsigned i = 0; i < mesh.mNumBones; ++i) {
            const aiBone &bone = *mesh.mBones[i];
            const aiNode *node = scene.mRootNode->FindNode(bone.mName);
            const aiMatrix4x4 bone_transform =
                node != nullptr ? transforms.at(node) * bone.mOffsetMatrix : transform;
            for (unsigned j = 0; j < bone.mNumWeights; ++j) {
                const auto &[index, weight] = bone.mWeights[j];
                if (index < points.size() && weight > 0) {
                    sums[index] += (bone_transform * points[index]) * weight;
                    weights[index] += weight;
                }
            }
        }
        for (std::size_t i = 0; i < points.size(); ++i) {
            points[i] = weights[i] > 0 ? sums[i] / weights[i] : transform * points[i];
        }
        return points;
    }

    /// The surface of a material. It is added when it is first used.
    std::uint32_t surface_of(unsigned material) {
        const auto [entry, is_new] =
            surfaces.emplace(material, static_cast<std::uint32_t>(model.mesh.surfaces.size()));
        if (is_new) {
            LwobSurface surface{.name = {}, .colour = default_colour};
            if (material < scene.mNumMaterials) {
                describe(*scene.mMaterials[material], surface);
            }
            surface.name = unused_name(surface.name);
            model.mesh.surfaces.push_back(surface);
        }
        return entry->second;
    }

    static void describe(const aiMaterial &material, LwobSurface &surface) {
        surface.name = material.GetName().C_Str();
        aiColor4D colour;
        if (material.Get(AI_MATKEY_COLOR_DIFFUSE, colour) == aiReturn_SUCCESS ||
            material.Get(AI_MATKEY_BASE_COLOR, colour) == aiReturn_SUCCESS) {
            surface.colour = {level_of(colour.r), level_of(colour.g), level_of(colour.b)};
        }
        int is_two_sided = 0;
        material.Get(AI_MATKEY_TWOSIDED, is_two_sided);
        surface.is_two_sided = is_two_sided != 0;
    }

    static std::uint8_t level_of(float part) {
        return part > 0 ? static_cast<std::uint8_t>(std::lround(std::min(part, 1.0F) * 255.0F))
                        : std::uint8_t{0};
    }

    /// The name, or if it is taken, one that differs from all others. An object file's polygons refer to
    /// surfaces by their place in the list of names, but other chunks do so by name.
    std::string unused_name(std::string name) {
        if (name.empty()) {
            name = "Default";
        }
        const std::string wanted = name;
        int &number = last_numbers.emplace(wanted, 1).first->second;
        while (!names.insert(name).second) {
            name = wanted + " " + std::to_string(++number);
        }
        return name;
    }

    const aiScene &scene;
    Up up;
    Model &model;
    Transforms transforms;
    std::map<unsigned, std::uint32_t> surfaces;
    std::set<std::string> names;
    /// By name the number of the last surface that would have had it. Thousands may have the same.
    std::map<std::string, int> last_numbers;
};

} // namespace

Model import_model(const std::string &path, std::optional<Up> up) {
    if (host::is_object_file(path)) {
        return model_of_object(path);
    }
    Assimp::Importer importer;
    // The importer deletes them.
    importer.SetProgressHandler(new Progress);
    importer.SetIOHandler(new Files(path));
    // Polygons stay as they are: no step is asked for that would cut them.
    const aiScene *scene = importer.ReadFile(path, 0);
    if (scene == nullptr) {
        refuse(std::string("cannot be read: ") + importer.GetErrorString());
    }
    Model model;
    const aiImporterDesc *format =
        importer.GetImporterInfo(static_cast<std::size_t>(importer.GetPropertyInteger("importerIndex", -1)));
    model.format = format != nullptr ? format->mName : "";
    if (scene->mRootNode != nullptr) {
        Merger(*scene, up.value_or(up_axis_of(*scene, format)), model).add_all();
    }
    send_progress(reading_percent);
    return model;
}

} // namespace convert
