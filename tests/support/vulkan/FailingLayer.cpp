// A Vulkan layer that makes any driver fail as a broken one does. TULVANE_TEST_VULKAN says how, and at which
// call of a kind, counted from 1: "lost 20" (the 20th submission finds the device lost), "memory 3" (the
// third allocation is refused), "hang 20" (waiting after the 20th submission takes for ever), "crash 20" (the
// 20th submission crashes), "refuse 1" (no device is given out).
#include <unistd.h>
#include <vulkan/vk_layer.h>
#include <vulkan/vulkan.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

struct Plan {
    std::string kind;
    int at = 0;
};

const Plan& plan()
{
    static const Plan read = [] {
        const char* const words = std::getenv("TULVANE_TEST_VULKAN");
        const std::string text = words == nullptr ? "" : words;
        const auto blank = text.find(' ');
        if (blank == std::string::npos)
            return Plan{};
        return Plan{text.substr(0, blank), std::atoi(text.c_str() + blank + 1)};
    }();
    return read;
}

PFN_vkGetInstanceProcAddr nextOfInstance = nullptr;
PFN_vkGetDeviceProcAddr nextOfDevice = nullptr;
VkInstance theInstance = VK_NULL_HANDLE;
std::atomic<int> submissions = 0;
std::atomic<int> allocations = 0;

template <class Function>
Function next(VkDevice device, const char* name)
{
    return reinterpret_cast<Function>(nextOfDevice(device, name));
}

VkDevice theDevice = VK_NULL_HANDLE;

bool isDue(const char* kind, int count)
{
    return plan().kind == kind && count >= plan().at;
}

VKAPI_ATTR VkResult VKAPI_CALL queueSubmit(VkQueue queue, uint32_t count, const VkSubmitInfo* infos,
                                           VkFence fence)
{
    const int number = ++submissions;
    if (isDue("crash", number))
        std::abort();
    if (isDue("lost", number))
        return VK_ERROR_DEVICE_LOST;
    return next<PFN_vkQueueSubmit>(theDevice, "vkQueueSubmit")(queue, count, infos, fence);
}

VKAPI_ATTR VkResult VKAPI_CALL waitForFences(VkDevice device, uint32_t count, const VkFence* fences,
                                             VkBool32 all, uint64_t limit)
{
    while (isDue("hang", submissions))
        pause();
    return next<PFN_vkWaitForFences>(device, "vkWaitForFences")(device, count, fences, all, limit);
}

VKAPI_ATTR VkResult VKAPI_CALL allocateMemory(VkDevice device, const VkMemoryAllocateInfo* info,
                                              const VkAllocationCallbacks* callbacks, VkDeviceMemory* memory)
{
    if (isDue("memory", ++allocations))
        return VK_ERROR_OUT_OF_DEVICE_MEMORY;
    return next<PFN_vkAllocateMemory>(device, "vkAllocateMemory")(device, info, callbacks, memory);
}

/// The loader's link to what lies below this layer.
template <class CreateInfo, class Link>
Link* linkOf(const CreateInfo* info, VkStructureType type)
{
    auto* link = static_cast<Link*>(const_cast<void*>(info->pNext));
    while (link != nullptr && (link->sType != type || link->function != VK_LAYER_LINK_INFO))
        link = static_cast<Link*>(const_cast<void*>(link->pNext));
    return link;
}

VKAPI_ATTR VkResult VKAPI_CALL createInstance(const VkInstanceCreateInfo* info,
                                              const VkAllocationCallbacks* callbacks, VkInstance* instance)
{
    auto* const link = linkOf<VkInstanceCreateInfo, VkLayerInstanceCreateInfo>(
        info, VK_STRUCTURE_TYPE_LOADER_INSTANCE_CREATE_INFO);
    nextOfInstance = link->u.pLayerInfo->pfnNextGetInstanceProcAddr;
    link->u.pLayerInfo = link->u.pLayerInfo->pNext;
    const auto create =
        reinterpret_cast<PFN_vkCreateInstance>(nextOfInstance(VK_NULL_HANDLE, "vkCreateInstance"));
    const VkResult result = create(info, callbacks, instance);
    theInstance = *instance;
    return result;
}

VKAPI_ATTR VkResult VKAPI_CALL createDevice(VkPhysicalDevice physical, const VkDeviceCreateInfo* info,
                                            const VkAllocationCallbacks* callbacks, VkDevice* device)
{
    if (plan().kind == "refuse")
        return VK_ERROR_INITIALIZATION_FAILED;
    auto* const link = linkOf<VkDeviceCreateInfo, VkLayerDeviceCreateInfo>(
        info, VK_STRUCTURE_TYPE_LOADER_DEVICE_CREATE_INFO);
    const auto below = link->u.pLayerInfo->pfnNextGetInstanceProcAddr;
    nextOfDevice = link->u.pLayerInfo->pfnNextGetDeviceProcAddr;
    link->u.pLayerInfo = link->u.pLayerInfo->pNext;
    const auto create = reinterpret_cast<PFN_vkCreateDevice>(below(theInstance, "vkCreateDevice"));
    const VkResult result = create(physical, info, callbacks, device);
    theDevice = *device;
    return result;
}

PFN_vkVoidFunction ours(const char* name);

VKAPI_ATTR PFN_vkVoidFunction VKAPI_CALL getDeviceProcAddr(VkDevice device, const char* name)
{
    const auto own = ours(name);
    return own != nullptr ? own : nextOfDevice(device, name);
}

VKAPI_ATTR PFN_vkVoidFunction VKAPI_CALL getInstanceProcAddr(VkInstance instance, const char* name)
{
    const auto own = ours(name);
    return own != nullptr ? own : nextOfInstance(instance, name);
}

PFN_vkVoidFunction ours(const char* name)
{
    const struct {
        const char* name;
        PFN_vkVoidFunction function;
    } functions[] = {
        {"vkGetInstanceProcAddr", reinterpret_cast<PFN_vkVoidFunction>(getInstanceProcAddr)},
        {"vkGetDeviceProcAddr", reinterpret_cast<PFN_vkVoidFunction>(getDeviceProcAddr)},
        {"vkCreateInstance", reinterpret_cast<PFN_vkVoidFunction>(createInstance)},
        {"vkCreateDevice", reinterpret_cast<PFN_vkVoidFunction>(createDevice)},
        {"vkQueueSubmit", reinterpret_cast<PFN_vkVoidFunction>(queueSubmit)},
        {"vkWaitForFences", reinterpret_cast<PFN_vkVoidFunction>(waitForFences)},
        {"vkAllocateMemory", reinterpret_cast<PFN_vkVoidFunction>(allocateMemory)},
    };
    for (const auto& function : functions) {
        if (std::strcmp(function.name, name) == 0)
            return function.function;
    }
    return nullptr;
}

} // namespace

extern "C" __attribute__((visibility("default"))) VkResult
vkNegotiateLoaderLayerInterfaceVersion(VkNegotiateLayerInterface* wanted)
{
    wanted->loaderLayerInterfaceVersion = 2;
    wanted->pfnGetInstanceProcAddr = getInstanceProcAddr;
    wanted->pfnGetDeviceProcAddr = getDeviceProcAddr;
    wanted->pfnGetPhysicalDeviceProcAddr = nullptr;
    return VK_SUCCESS;
}
