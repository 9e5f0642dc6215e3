// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "client/http_channel.hpp"

#include <curl/curl.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace pxcl::client {
namespace {

using std::chrono::milliseconds;

constexpr int kLookMs = 100;  // how often the cancel flag is looked at

template <auto close>
struct Closer {
  template <typename Handle>
  void operator()(Handle* handle) const {
    close(handle);
  }
};
using EasyHandle = std::unique_ptr<CURL, Closer<&curl_easy_cleanup>>;
using MultiHandle = std::unique_ptr<CURLM, Closer<&curl_multi_cleanup>>;
using HeaderList = std::unique_ptr<curl_slist, Closer<&curl_slist_free_all>>;

struct Library {
  Library() : ready(curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK) {}
  ~Library() {
    if (ready) curl_global_cleanup();
  }
  const bool ready;
};

bool library_is_ready() {
  static const Library library;
  return library.ready;
}

Error out_of_memory() {
  return {Fault::kUnreachable,
          "The HTTP library could not be set up. Free some memory and try again."};
}

}  // namespace

// One request and its answer.
class HttpChannel::Transfer {
 public:
  Transfer(const std::string& url, milliseconds limit, CancelFlag cancelled)
      : url_(url), limit_(limit), cancelled_(cancelled) {}

  Result<std::string> post(std::string_view command, std::string_view data);
  Result<std::string> get();

 private:
  bool prepare();
  bool prepare_post();
  Result<std::string> run();
  CURLcode perform(CURLM* multi);
  Result<std::string> outcome(CURLcode code);
  Error failure(CURLcode code) const;

  static std::size_t give(char* buffer, std::size_t size, std::size_t count, void* self);
  static int rewind(void* self, curl_off_t offset, int origin);
  static std::size_t take(char* bytes, std::size_t size, std::size_t count, void* self);

  const std::string& url_;
  milliseconds limit_;
  CancelFlag cancelled_;
  std::string_view parts_[2];  // of the request's body
  std::size_t given_ = 0;
  std::string reply_;
  bool is_too_long_ = false;
  HeaderList headers_;
  EasyHandle easy_;
};

std::size_t HttpChannel::Transfer::give(char* buffer, std::size_t size, std::size_t count,
                                        void* self) {
  auto& transfer = *static_cast<Transfer*>(self);
  std::size_t room = size * count;
  std::size_t skip = transfer.given_;
  std::size_t given = 0;
  for (const std::string_view part : transfer.parts_) {
    const std::size_t start = std::min(skip, part.size());
    const std::size_t length = std::min(part.size() - start, room);
    std::copy_n(part.data() + start, length, buffer + given);
    skip -= start;
    room -= length;
    given += length;
  }
  transfer.given_ += given;
  return given;
}

int HttpChannel::Transfer::rewind(void* self, curl_off_t offset, int origin) {
  if (origin != SEEK_SET || offset < 0) return CURL_SEEKFUNC_CANTSEEK;
  static_cast<Transfer*>(self)->given_ = static_cast<std::size_t>(offset);
  return CURL_SEEKFUNC_OK;
}

// Any number but what was offered ends the transfer.
std::size_t HttpChannel::Transfer::take(char* bytes, std::size_t size, std::size_t count,
                                        void* self) {
  auto& transfer = *static_cast<Transfer*>(self);
  const std::size_t length = size * count;
  if (transfer.reply_.size() + length > kLongestReply) {
    transfer.is_too_long_ = true;
    return 0;
  }
  transfer.reply_.append(bytes, length);
  return length;
}

// A printer is spoken to directly and keeps no sessions: no proxy, no redirection, no second use of a connection that
// it may have closed meanwhile.
bool HttpChannel::Transfer::prepare() {
  if (!library_is_ready()) return false;
  easy_.reset(curl_easy_init());
  if (easy_ == nullptr) return false;
  CURL* const easy = easy_.get();
  const auto limit = static_cast<long>(std::max<milliseconds::rep>(limit_.count(), 1));
  const CURLcode codes[] = {
      curl_easy_setopt(easy, CURLOPT_URL, url_.c_str()),
      curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https"),
      curl_easy_setopt(easy, CURLOPT_PROXY, ""),
      curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L),
      curl_easy_setopt(easy, CURLOPT_TIMEOUT_MS, limit),
      curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT_MS, limit),
      curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &Transfer::take),
      curl_easy_setopt(easy, CURLOPT_WRITEDATA, this),
  };
  return std::all_of(std::begin(codes), std::end(codes),
                     [](CURLcode code) { return code == CURLE_OK; });
}

// Without "Expect:" the body would wait for a word that printers do not give.
bool HttpChannel::Transfer::prepare_post() {
  curl_slist* list = curl_slist_append(nullptr, "Content-Type: application/octet-stream");
  headers_.reset(list);
  if (list == nullptr || curl_slist_append(list, "Expect:") == nullptr) return false;
  CURL* const easy = easy_.get();
  const auto size = static_cast<curl_off_t>(parts_[0].size() + parts_[1].size());
  const CURLcode codes[] = {
      curl_easy_setopt(easy, CURLOPT_POST, 1L),
      curl_easy_setopt(easy, CURLOPT_HTTPHEADER, list),
      curl_easy_setopt(easy, CURLOPT_POSTFIELDSIZE_LARGE, size),
      curl_easy_setopt(easy, CURLOPT_READFUNCTION, &Transfer::give),
      curl_easy_setopt(easy, CURLOPT_READDATA, this),
      curl_easy_setopt(easy, CURLOPT_SEEKFUNCTION, &Transfer::rewind),
      curl_easy_setopt(easy, CURLOPT_SEEKDATA, this),
  };
  return std::all_of(std::begin(codes), std::end(codes),
                     [](CURLcode code) { return code == CURLE_OK; });
}

Result<std::string> HttpChannel::Transfer::post(std::string_view command, std::string_view data) {
  parts_[0] = command;
  parts_[1] = data;
  if (!prepare() || !prepare_post()) return out_of_memory();
  return run();
}

Result<std::string> HttpChannel::Transfer::get() {
  if (!prepare()) return out_of_memory();
  return run();
}

Result<std::string> HttpChannel::Transfer::run() {
  const MultiHandle multi(curl_multi_init());
  if (multi == nullptr || curl_multi_add_handle(multi.get(), easy_.get()) != CURLM_OK) {
    return out_of_memory();
  }
  const CURLcode code = perform(multi.get());
  Result<std::string> result = outcome(code);
  curl_multi_remove_handle(multi.get(), easy_.get());
  return result;
}

CURLcode HttpChannel::Transfer::perform(CURLM* multi) {
  while (!is_set(cancelled_)) {
    int running = 0;
    if (curl_multi_perform(multi, &running) != CURLM_OK) return CURLE_OUT_OF_MEMORY;
    if (running == 0) {
      int left = 0;
      const CURLMsg* const message = curl_multi_info_read(multi, &left);
      return message == nullptr ? CURLE_OUT_OF_MEMORY : message->data.result;
    }
    curl_multi_poll(multi, nullptr, 0, kLookMs, nullptr);
  }
  return CURLE_ABORTED_BY_CALLBACK;
}

Result<std::string> HttpChannel::Transfer::outcome(CURLcode code) {
  if (code != CURLE_OK) return failure(code);
  long status = 0;
  curl_easy_getinfo(easy_.get(), CURLINFO_RESPONSE_CODE, &status);
  if (status == 200) return std::move(reply_);
  return Error{Fault::kBadReply,
               url_ + " answered with HTTP status " + std::to_string(status) +
                   ". Check that this is the address of a printer of this protocol."};
}

Error HttpChannel::Transfer::failure(CURLcode code) const {
  if (is_set(cancelled_)) return {Fault::kCancelled, "The exchange with the printer was stopped."};
  if (is_too_long_) {
    return {Fault::kBadReply,
            "The answer of " + url_ + " is longer than " + std::to_string(kLongestReply >> 20) +
                " MiB and was not read. Check that this is a printer of this protocol."};
  }
  if (code == CURLE_OPERATION_TIMEDOUT) {
    return {Fault::kUnreachable, "The printer at " + url_ + " gave no complete answer within " +
                                     name_of_limit(limit_) +
                                     ". Check that it is switched on and connected."};
  }
  return {Fault::kUnreachable,
          "Cannot speak to the printer at " + url_ + ": " + curl_easy_strerror(code) +
              ". Check the address and that the printer is switched on and connected."};
}

Result<std::unique_ptr<HttpChannel>> HttpChannel::open(std::string url, Options options) {
  const std::size_t host = url.find("://") + 3;
  if (!(url.starts_with("http://") || url.starts_with("https://")) || url.size() == host) {
    return Error{Fault::kBadInput, url + " is no address of a printer: write http://HOST[:PORT]."};
  }
  while (url.ends_with('/')) url.pop_back();
  return std::unique_ptr<HttpChannel>(new HttpChannel(std::move(url), options));
}

HttpChannel::HttpChannel(std::string url, Options options)
    : url_(std::move(url)), options_(options) {}

HttpChannel::~HttpChannel() = default;

Result<std::string> HttpChannel::exchange(std::string_view command, std::string_view data) {
  return Transfer(url_, options_.time_out, options_.cancelled).post(command, data);
}

Result<std::string> HttpChannel::exchange_regardless(std::string_view command, milliseconds limit) {
  return Transfer(url_, limit, nullptr).post(command, {});
}

Result<std::string> HttpChannel::device_id() {
  const std::string url = url_ + "/device-id";
  return Transfer(url, options_.time_out, options_.cancelled).get();
}

}  // namespace pxcl::client
