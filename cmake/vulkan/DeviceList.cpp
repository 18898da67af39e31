// What the Vulkan drivers of this machine offer to compute with, in the order in which ggml counts them. The
// library that ggml's own view comes from says neither the driver's version nor whether a device is only
// software.
#include <vulkan/vulkan_core.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

struct Offer {
    VkPhysicalDeviceDriverProperties driver{
        VK_STRUCTURE_TYPE_PHYSICAL_DEVICE_DRIVER_PROPERTIES, nullptr, {}, {}, {}, {}};
    VkPhysicalDeviceProperties2 device{VK_STRUCTURE_TYPE_PHYSICAL_DEVICE_PROPERTIES_2, nullptr, {}};
    std::uint64_t total = 0;
    std::uint64_t free = 0;
};

bool hasExtension(VkPhysicalDevice device, const std::string& name)
{
    std::uint32_t count = 0;
    vkEnumerateDeviceExtensionProperties(device, nullptr, &count, nullptr);
    std::vector<VkExtensionProperties> extensions(count);
    vkEnumerateDeviceExtensionProperties(device, nullptr, &count, extensions.data());
    for (const VkExtensionProperties& extension : extensions) {
        if (name == extension.extensionName)
            return true;
    }
    return false;
}

/// Whether ggml's shaders can run there.
bool isFit(VkPhysicalDevice device)
{
    VkPhysicalDeviceProperties properties{};
    vkGetPhysicalDeviceProperties(device, &properties);
    if (properties.apiVersion < VK_API_VERSION_1_2)
        return false;
    VkPhysicalDevice16BitStorageFeatures storage{
        VK_STRUCTURE_TYPE_PHYSICAL_DEVICE_16BIT_STORAGE_FEATURES, nullptr, 0, 0, 0, 0};
    VkPhysicalDeviceFeatures2 features{VK_STRUCTURE_TYPE_PHYSICAL_DEVICE_FEATURES_2, &storage, {}};
    vkGetPhysicalDeviceFeatures2(device, &features);
    return storage.storageBuffer16BitAccess != VK_FALSE;
}

void measureMemory(VkPhysicalDevice device, Offer& offer)
{
    VkPhysicalDeviceMemoryBudgetPropertiesEXT budget{
        VK_STRUCTURE_TYPE_PHYSICAL_DEVICE_MEMORY_BUDGET_PROPERTIES_EXT, nullptr, {}, {}};
    const bool isBudgeted = hasExtension(device, VK_EXT_MEMORY_BUDGET_EXTENSION_NAME);
    VkPhysicalDeviceMemoryProperties2 memory{
        VK_STRUCTURE_TYPE_PHYSICAL_DEVICE_MEMORY_PROPERTIES_2, isBudgeted ? &budget : nullptr, {}};
    vkGetPhysicalDeviceMemoryProperties2(device, &memory);
    for (std::uint32_t i = 0; i < memory.memoryProperties.memoryHeapCount; ++i) {
        const VkMemoryHeap& heap = memory.memoryProperties.memoryHeaps[i];
        if ((heap.flags & VK_MEMORY_HEAP_DEVICE_LOCAL_BIT) == 0)
            continue;
        offer.total += heap.size;
        if (!isBudgeted)
            offer.free += heap.size;
        else if (budget.heapBudget[i] > budget.heapUsage[i])
            offer.free += budget.heapBudget[i] - budget.heapUsage[i];
    }
}

std::vector<VkPhysicalDevice> devicesOf(VkInstance instance)
{
    std::uint32_t count = 0;
    vkEnumeratePhysicalDevices(instance, &count, nullptr);
    std::vector<VkPhysicalDevice> devices(count);
    vkEnumeratePhysicalDevices(instance, &count, devices.data());
    devices.resize(count);
    return devices;
}

} // namespace

using TakeDevice = void (*)(void* context, std::uint32_t index, const char* name, int type,
                            const char* driver, std::uint64_t totalBytes, std::uint64_t freeBytes);

extern "C" int tulvane_list_devices(TakeDevice take, void* context);

/// Calls `take` for each device that ggml can use; `type` is Vulkan's. The result of the loader's first call:
/// 0 where a driver was found, which may have offered nothing.
extern "C" __attribute__((visibility("default"))) int tulvane_list_devices(TakeDevice take, void* context)
{
    VkApplicationInfo application{};
    application.sType = VK_STRUCTURE_TYPE_APPLICATION_INFO;
    application.apiVersion = VK_API_VERSION_1_2;
    VkInstanceCreateInfo wanted{};
    wanted.sType = VK_STRUCTURE_TYPE_INSTANCE_CREATE_INFO;
    wanted.pApplicationInfo = &application;
    VkInstance instance = VK_NULL_HANDLE;
    if (const VkResult result = vkCreateInstance(&wanted, nullptr, &instance); result != VK_SUCCESS)
        return result;
    std::uint32_t index = 0;
    for (VkPhysicalDevice device : devicesOf(instance)) {
        const std::uint32_t here = index++;
        if (!isFit(device))
            continue;
        Offer offer;
        offer.device.pNext = &offer.driver;
        vkGetPhysicalDeviceProperties2(device, &offer.device);
        measureMemory(device, offer);
        const VkPhysicalDeviceProperties& facts = offer.device.properties;
        const std::string driver = std::string(offer.driver.driverName) + " " + offer.driver.driverInfo;
        take(context, here, facts.deviceName, facts.deviceType, driver.c_str(), offer.total, offer.free);
    }
    vkDestroyInstance(instance, nullptr);
    return 0;
}
