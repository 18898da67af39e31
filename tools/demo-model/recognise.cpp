// Transcribes many pieces of one sound file with one loaded model, with the parameters that the program uses.
//
//   recognise MODEL PCM THREADS < REQUESTS
//
// PCM is 16 kHz, 16 bit, mono, without a header. A request is one line: language, prompt, first sample and
// number of samples, between tabs. The first line of the answer is the load time in milliseconds; then comes
// one line for each request: milliseconds, language, number of segments and text, between tabs.
#include "whisper.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using Context = std::unique_ptr<whisper_context, decltype(&whisper_free)>;

constexpr std::size_t shortestTake = 19200; // the program pads to this

double millisecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

struct Request {
    std::string language;
    std::string prompt;
    std::streamoff first = 0;
    std::size_t count = 0;
};

Request parsed(const std::string& line)
{
    std::istringstream fields(line);
    Request request;
    std::string number;
    std::getline(fields, request.language, '\t');
    std::getline(fields, request.prompt, '\t');
    std::getline(fields, number, '\t');
    request.first = std::stoll(number);
    std::getline(fields, number, '\t');
    request.count = std::stoul(number);
    return request;
}

std::vector<float> samplesOf(std::ifstream& pcm, const Request& request)
{
    std::vector<std::int16_t> raw(request.count);
    pcm.seekg(request.first * 2);
    pcm.read(reinterpret_cast<char*>(raw.data()), static_cast<std::streamsize>(raw.size() * 2));
    std::vector<float> samples(std::max(request.count, shortestTake), 0.0F);
    std::transform(raw.begin(), raw.end(), samples.begin(),
                   [](std::int16_t sample) { return static_cast<float>(sample) / 32768.0F; });
    return samples;
}

whisper_full_params parametersFor(const Request& request, int threads)
{
    whisper_full_params parameters = whisper_full_default_params(WHISPER_SAMPLING_GREEDY);
    parameters.n_threads = threads;
    parameters.language = request.language.c_str();
    parameters.no_context = true;
    parameters.no_timestamps = true;
    parameters.print_progress = false;
    parameters.print_realtime = false;
    parameters.print_timestamps = false;
    parameters.suppress_blank = true;
    parameters.suppress_nst = true;
    parameters.temperature_inc = 0.2F;
    if (!request.prompt.empty())
        parameters.initial_prompt = request.prompt.c_str();
    return parameters;
}

void answer(whisper_context* context, std::ifstream& pcm, const Request& request, int threads)
{
    const std::vector<float> samples = samplesOf(pcm, request);
    const auto start = Clock::now();
    const int status = whisper_full(context, parametersFor(request, threads), samples.data(),
                                    static_cast<int>(samples.size()));
    const double milliseconds = millisecondsSince(start);
    const int segments = whisper_full_n_segments(context);
    std::string text;
    for (int i = 0; i < segments; ++i)
        text += whisper_full_get_segment_text(context, i);
    const char* language = status == 0 ? whisper_lang_str(whisper_full_lang_id(context)) : "failed";
    std::cout << milliseconds << '\t' << language << '\t' << segments << '\t' << text << '\n' << std::flush;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4) {
        std::cerr << "usage: recognise MODEL PCM THREADS < REQUESTS\n";
        return 2;
    }
    whisper_log_set([](ggml_log_level, const char*, void*) {}, nullptr);
    whisper_context_params parameters = whisper_context_default_params();
    parameters.use_gpu = false;
    parameters.flash_attn = true;
    const auto start = Clock::now();
    const Context context(whisper_init_from_file_with_params(argv[1], parameters), &whisper_free);
    std::ifstream pcm(argv[2], std::ios::binary);
    if (!context || !pcm) {
        std::cerr << "could not open the model or the sound\n";
        return 1;
    }
    std::cout << millisecondsSince(start) << '\n';
    for (std::string line; std::getline(std::cin, line);)
        answer(context.get(), pcm, parsed(line), std::stoi(argv[3]));
    return 0;
}
