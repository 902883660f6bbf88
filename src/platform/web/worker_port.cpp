#include "platform/web/worker_port.h"

#include <emscripten.h>

#include <cstdlib>
#include <memory>
#include <string>

// clang-format off
// The object Module.vorn is worker.js's.

// Waits for a request and takes it, or looks whether there is one; answers whether one was taken.
EM_ASYNC_JS(int, vorn_take_request, (int waits), {
  return await Module["vorn"]["takeRequest"](waits !== 0) ? 1 : 0;
});

// The fields of the request that was taken, as JSON; to be freed.
EM_JS(char*, vorn_request_fields, (), {
  const text = Module["vorn"]["fields"]();
  const size = lengthBytesUTF8(text) + 1;
  const place = _malloc(size);
  stringToUTF8(text, place, size);
  return place;
});

EM_JS(int, vorn_request_size, (), { return Module["vorn"]["bytes"]().length; });

EM_JS(void, vorn_request_bytes, (char* place), { HEAPU8.set(Module["vorn"]["bytes"](), place); });

EM_JS(void, vorn_tell, (const char* fields, int size, const char* name, const char* bytes, int count), {
  Module["vorn"]["tell"](UTF8ToString(fields, size), name ? UTF8ToString(name) : "",
                         HEAPU8.slice(bytes, bytes + count));
});
// clang-format on

namespace vorn {
namespace {

std::string taken_over(char* text) {
  const std::unique_ptr<char, void (*)(void*)> owned(text, std::free);
  return owned.get();
}

WebRequest request_taken() {
  WebRequest request{nlohmann::ordered_json::parse(taken_over(vorn_request_fields()), nullptr, false)};
  if (!request.fields.is_object()) request.fields = nlohmann::ordered_json::object();
  request.bytes.resize(static_cast<std::size_t>(vorn_request_size()));
  vorn_request_bytes(request.bytes.data());
  return request;
}

}  // namespace

void WorkerPort::tell(const nlohmann::ordered_json& fields, const char* name, std::string_view bytes) {
  const std::string text = fields.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
  vorn_tell(text.data(), static_cast<int>(text.size()), name, bytes.data(), static_cast<int>(bytes.size()));
}

WebRequest WorkerPort::next() {
  vorn_take_request(1);
  return request_taken();
}

std::optional<WebRequest> WorkerPort::next_if_any() {
  if (vorn_take_request(0) == 0) return {};
  return request_taken();
}

}  // namespace vorn
