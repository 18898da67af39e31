#include <platform/linux/x11/keyboard/X11KeyPosting.h>

#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>

namespace tulvane {

namespace {

constexpr std::chrono::milliseconds grabRound{10};
constexpr std::chrono::milliseconds lookEvery{100};

} // namespace

X11KeyPosting::X11KeyPosting(X11Connection& link, Scheduler& scheduler, IsInFront isInFront)
    : m_link(link),
      m_scheduler(scheduler),
      m_isInFront(std::move(isInFront)),
      m_stroke(link)
{
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(link.connection(), &xcb_test_id);
    m_canPost = extension != nullptr && extension->present != 0;
}

X11KeyPosting::~X11KeyPosting()
{
    for (Waiting& waiting : m_waiting) {
        waiting.promise.addResult(false);
        waiting.promise.finish();
    }
}

QFuture<bool> X11KeyPosting::paste(const PasteTarget& target)
{
    return whenFree([this, target] { return postNow(chordOf(target.chord), target); });
}

QFuture<bool> X11KeyPosting::typeSpaces(int count)
{
    return whenFree([this, count] {
        bool posted = true;
        for (int typed = 0; posted && typed < count; ++typed)
            posted = postNow({XKB_KEY_space, {}}, std::nullopt);
        return posted;
    });
}

QFuture<bool> X11KeyPosting::whenFree(Post post)
{
    if (!keysAreTaken())
        return QtFuture::makeReadyFuture(post());
    m_waiting.push_back({std::move(post), static_cast<int>(grabLimitMs / grabRound.count()), {}, {}});
    Waiting& waiting = m_waiting.back();
    waiting.promise.start();
    waiting.next = m_scheduler.after(grabRound, [this, &waiting] { tryAgain(waiting); });
    return waiting.promise.future();
}

void X11KeyPosting::tryAgain(Waiting& waiting)
{
    const bool taken = keysAreTaken();
    if (taken && --waiting.roundsLeft > 0) {
        waiting.next = m_scheduler.after(grabRound, [this, &waiting] { tryAgain(waiting); });
        return;
    }
    const bool posted = !taken && waiting.post();
    QPromise<bool> promise = std::move(waiting.promise);
    m_waiting.remove_if([&](const Waiting& one) { return &one == &waiting; });
    promise.addResult(posted);
    promise.finish();
}

bool X11KeyPosting::keysAreTaken()
{
    // A hotkey that is still held down is grabbed: until it is released, every key goes to the client that
    // grabbed it. Only then is it worth asking, since asking disturbs the focused window a little.
    const auto layout = KeyboardLayout::current(m_link);
    const KeyboardState state = KeyboardState::current(m_link);
    const bool keyHeld = layout && std::ranges::any_of(state.down, [&](xcb_keycode_t code) {
                             return !layout->isHeldModifier(code);
                         });
    if (!keyHeld)
        return false;
    xcb_connection_t* const connection = m_link.connection();
    const auto cookie = xcb_grab_keyboard(connection, 1, m_link.root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
                                          XCB_GRAB_MODE_ASYNC);
    const XcbReply<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(connection, cookie, nullptr));
    if (!reply || reply->status != XCB_GRAB_STATUS_SUCCESS)
        return reply != nullptr;
    xcb_ungrab_keyboard(connection, XCB_CURRENT_TIME);
    m_link.flush();
    return false;
}

bool X11KeyPosting::postNow(const KeyChord& chord, const std::optional<PasteTarget>& target)
{
    // The user may go elsewhere at any moment.
    const bool posted = m_canPost && m_stroke.post(chord, [&] { return !target || m_isInFront(*target); });
    if (posted)
        m_link.catchUp();
    letGoLater();
    return posted && !m_link.isBroken();
}

void X11KeyPosting::letGoLater()
{
    m_letGo.reset();
    if (!m_stroke.holdsKeys() || m_link.isBroken())
        return;
    m_letGo = m_scheduler.after(lookEvery, [this] {
        m_stroke.letGo();
        letGoLater();
    });
}

KeyChord X11KeyPosting::chordOf(const PasteChord& chord)
{
    KeyChord keys{xkb_keysym_from_name(chord.key.toUtf8().constData(), XKB_KEYSYM_CASE_INSENSITIVE), {}};
    for (const auto& [modifier, key] :
         {std::pair(PasteChord::control, XKB_KEY_Control_L), std::pair(PasteChord::shift, XKB_KEY_Shift_L),
          std::pair(PasteChord::alt, XKB_KEY_Alt_L), std::pair(PasteChord::super, XKB_KEY_Super_L)}) {
        if ((chord.modifiers & modifier) != 0)
            keys.modifiers.append(static_cast<xkb_keysym_t>(key));
    }
    return keys;
}

} // namespace tulvane
