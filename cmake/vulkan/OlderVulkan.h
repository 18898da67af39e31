// Forced into ggml-vulkan.cpp, which names three things of VK_EXT_layer_settings that the Vulkan headers of
// Debian 12 (1.3.239) do not have yet. The library asks for them only where a validation layer is switched
// on, which is never here.
#pragma once

#include <vulkan/vulkan_core.h>

#ifndef VK_EXT_layer_settings

#include <cstdint>
#include <vector>

namespace vk {

enum class LayerSettingTypeEXT : std::int32_t { eBool32 = 0 };

struct LayerSettingEXT {
    const char* layer;
    const char* setting;
    LayerSettingTypeEXT type;
    std::uint32_t count;
    const void* values;
};

/// As VkLayerSettingsCreateInfoEXT lies in memory. A layer that is older than the extension passes over it.
struct LayerSettingsCreateInfoEXT {
    explicit LayerSettingsCreateInfoEXT(const std::vector<LayerSettingEXT>& given)
        : count(static_cast<std::uint32_t>(given.size())),
          settings(given.data())
    {
    }

    VkStructureType type = static_cast<VkStructureType>(1'000'496'000);
    const void* next = nullptr;
    std::uint32_t count;
    const LayerSettingEXT* settings;
};

} // namespace vk

#endif
