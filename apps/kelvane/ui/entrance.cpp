#include "kelvane/ui/entrance.h"

#include <algorithm>
#include <optional>

#include "text/letters.h"

namespace kelvane::view {
namespace {

constexpr milliseconds kParting{1'000};  // for who was refused, to read why
// Of a head: its last line's end, and a line that holds nothing.
constexpr std::string_view kEnd = "\n\r\n";

const char* reason(int status) {
  switch (status) {
    case 408:
      return "Request Timeout";
    case 411:
      return "Length Required";
    case 413:
      return "Payload Too Large";
    case 414:
      return "URI Too Long";
    case 417:
      return "Expectation Failed";
    case 431:
      return "Request Header Fields Too Large";
    default:
      return "Bad Request";
  }
}

// Nothing for what is no plain number of bytes.
std::optional<std::size_t> lengthIn(std::string_view value) {
  constexpr std::size_t kDigits = 9;
  while (value.starts_with(' ') || value.starts_with('\t')) value.remove_prefix(1);
  while (!value.empty() && (value.ends_with(' ') || value.ends_with('\t') || value.ends_with('\r')))
    value.remove_suffix(1);
  if (value.empty() || value.size() > kDigits || value.find_first_not_of("0123456789") != value.npos)
    return std::nullopt;
  return std::stoul(std::string(value));
}

// Of a request's head, behind its first line.
struct BodyForm {
  int refused = 0;
  std::optional<std::size_t> length;
};
BodyForm bodyForm(std::string_view lines) {
  BodyForm form;
  while (!lines.empty() && form.refused == 0) {
    const std::string_view line = lines.substr(0, lines.find('\n'));
    lines.remove_prefix(std::min(line.size() + 1, lines.size()));
    const std::size_t colon = line.find(':');
    const std::string name = colon == line.npos ? std::string() : text::lower(line.substr(0, colon));
    if (name == "content-length") {
      const auto length = lengthIn(line.substr(colon + 1));
      if (!length || form.length) form.refused = 400;
      form.length = length;
    } else if (name == "transfer-encoding") {
      form.refused = 411;
    } else if (name == "expect") {
      form.refused = 417;
    }
  }
  return form;
}

}  // namespace

RequestForm requestForm(std::string_view received, const Bounds& bounds) {
  const std::size_t line = received.find('\n'), end = received.find(kEnd);
  if (std::min(line, received.size()) > bounds.line) return {414, 0};
  if (std::min(end, received.size()) > bounds.head) return {431, 0};
  if (end == received.npos) return {};
  const BodyForm body = bodyForm(received.substr(line + 1, end - line));
  if (body.refused != 0) return {body.refused, 0};
  if (body.length.value_or(0) > bounds.body) return {413, 0};
  return {0, end + kEnd.size() + body.length.value_or(0)};
}

Entrance::Entrance(Bounds bounds, Answer answer) : bounds_(bounds), answer_(std::move(answer)) {
  threads_.emplace_back([this] { watchDoor(); });
  for (std::size_t i = 0; i < bounds_.threads; ++i) threads_.emplace_back([this] { answerRequests(); });
}

Entrance::~Entrance() {
  {
    const std::lock_guard lock(mutex_);
    over_ = true;
  }
  watch_.wake();
  whole_.notify_all();
  for (std::thread& thread : threads_) thread.join();
}

void Entrance::take(os::Socket socket) {
  auto guest = std::make_unique<Guest>(socket);
  guest->since = Clock::now();
  guest->until = guest->since + bounds_.request;
  {
    const std::lock_guard lock(mutex_);
    arriving_.push_back(std::move(guest));
  }
  watch_.wake();
}

// ---- the door's thread

void Entrance::watchDoor() {
  std::vector<GuestPtr> guests;
  while (admit(guests)) {
    const auto now = Clock::now();
    auto next = now + bounds_.idle;
    std::vector<os::Socket> sockets;
    for (const GuestPtr& guest : guests) {
      sockets.push_back(guest->connection.socket());
      next = std::min(next, guest->until);
    }
    const std::vector<bool> ready = watch_.wait(sockets, std::chrono::ceil<milliseconds>(next - now));
    for (std::size_t i = 0; i < guests.size(); ++i)
      if (ready[i] || Clock::now() >= guests[i]->until) look(guests[i]);
    std::erase(guests, nullptr);
  }
}

bool Entrance::admit(std::vector<GuestPtr>& guests) {
  std::vector<GuestPtr> arrived;
  {
    const std::lock_guard lock(mutex_);
    if (over_) return false;
    arrived.swap(arriving_);
  }
  for (GuestPtr& guest : arrived) {
    if (!guest->received.empty()) look(guest);  // it sent its next request with the one before
    if (guest) guests.push_back(std::move(guest));
  }
  while (!guests.empty() && guests.size() + away_ > bounds_.connections)
    guests.erase(std::min_element(guests.begin(), guests.end(),
                                  [](const GuestPtr& a, const GuestPtr& b) { return a->since < b->since; }));
  return true;
}

void Entrance::look(GuestPtr& guest) {
  const bool waited = !guest->received.empty() || guest->requests == 0;
  const std::size_t most =
      guest->refused ? bounds_.body : kEnd.size() + bounds_.head + bounds_.body - guest->received.size();
  const bool more = guest->connection.receive(guest->received, most);
  const auto now = Clock::now();
  if (guest->refused) {
    guest->received.clear();
    if (!more || now >= guest->until) guest.reset();
    return;
  }
  if (!waited && !guest->received.empty()) guest->until = now + bounds_.request;
  if (guest->length == 0) {
    const RequestForm form = requestForm(guest->received, bounds_);
    if (form.refused != 0) return refuse(*guest, form.refused);
    guest->length = form.length;
  }
  if (guest->length != 0 && guest->received.size() >= guest->length) return give(std::move(guest));
  if (!more || (now >= guest->until && guest->received.empty())) return guest.reset();
  if (now >= guest->until) refuse(*guest, 408);
}

void Entrance::refuse(Guest& guest, int status) const {
  const std::string text = std::string(reason(status)) + "\n";
  const std::string answer =
      "HTTP/1.1 " + std::to_string(status) + " " + reason(status) +
      "\r\nConnection: close\r\nContent-Type: text/plain\r\nContent-Length: " + std::to_string(text.size()) +
      "\r\n\r\n" + text;
  static_cast<void>(guest.connection.send(answer, milliseconds(0)));  // who doesn't take it goes without
  guest.connection.endSending();
  guest.received.clear();
  guest.refused = true;
  guest.until = Clock::now() + kParting;
}

void Entrance::give(GuestPtr guest) {
  ++away_;
  {
    const std::lock_guard lock(mutex_);
    answerable_.push_back(std::move(guest));
  }
  whole_.notify_one();
}

// ---- the threads that answer

Entrance::GuestPtr Entrance::nextToAnswer() {
  std::unique_lock lock(mutex_);
  whole_.wait(lock, [this] { return over_ || !answerable_.empty(); });
  if (over_) return nullptr;
  GuestPtr guest = std::move(answerable_.front());
  answerable_.pop_front();
  return guest;
}

void Entrance::answerRequests() {
  while (GuestPtr guest = nextToAnswer()) {
    const bool last = ++guest->requests >= bounds_.requests;
    const bool stays = answer_(guest->connection, std::string_view(guest->received).substr(0, guest->length), last);
    guest->received.erase(0, guest->length);
    guest->length = 0;
    guest->since = Clock::now();
    guest->until = guest->since + (guest->received.empty() ? bounds_.idle : bounds_.request);
    if (!stays) guest.reset();
    --away_;
    if (!guest) continue;
    {
      const std::lock_guard lock(mutex_);
      arriving_.push_back(std::move(guest));
    }
    watch_.wake();
  }
}

}  // namespace kelvane::view
