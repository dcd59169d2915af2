"""Two users of the windows, one with a mouse and one with a keyboard, and what both do in every job."""

from desktop import wait_for
from display import xdotool

MAIN = "Talsk/Orvanth .conf Editor"  # the title of message boxes, too
NEW = "[x] New Settings / [ ] optional settings:"
OBSOLETE = "NonStandard / Obsolete Settings:"
CURRENT = "Parameters:"


def type_to_choose(text, chosen):
    """Types a text in a list, again when a busy machine made a pause in it: there a new search begins."""
    for _ in range(5):
        xdotool("type", text)
        try:
            return wait_for(text, chosen, limit=5)
        except AssertionError as error:
            missed = error
    raise missed


class Mouse:
    """Does the job without a key."""

    def __init__(self, program):
        self.program = program

    def choose_file(self, name):
        self.program.find(MAIN, "combo box", "Config File:").click()
        self.program.find(MAIN, "list item", name).click()

    def press(self, window, button, description=None):
        self.program.find(window, "push button", button, description).click()

    def go_to(self, window, _, item):
        self.program.find(window, "list item", item).click()

    def tick(self, window, _, item):
        self.program.find(window, "list item", item).click(8)  # pixels: in the check box

    def turn_to(self, window, page, _):
        self.program.find(window, "page tab", page).click()


class Keyboard:
    """Does the job without a mouse."""

    def __init__(self, program):
        self.program = program

    def choose_file(self, name):
        self.program.tab_to(MAIN, "combo box", "Config File:")

        def chosen():
            return [c for c in self.program.active(MAIN).showing() if (c.role, c.name) == ("combo box", name)]

        type_to_choose(name, chosen)  # the text of a list is its name

    def press(self, window, button, description=None):
        self.program.tab_to(window, "push button", button, description)
        xdotool("key", "space")

    def go_to(self, window, group, item):
        self.program.tab_to(window, "list", group)
        type_to_choose(item, lambda: self.program.find(window, "list item", item).has("SELECTED"))

    def tick(self, window, group, item):
        self.go_to(window, group, item)
        xdotool("key", "space")

    def turn_to(self, window, page, from_page):
        self.program.tab_to(window, "page tab list", from_page)
        xdotool("key", "Right")

    def replace(self, window, editor, text):
        self.program.tab_to(window, "text", editor)
        xdotool("key", "ctrl+a")
        xdotool("type", text)
        wait_for(text, lambda: self.program.find(window, "text", editor).text == text)


def answer(user, message, button):
    """Waits for a message box and presses a button of it."""
    user.program.find(MAIN, "label", message)
    user.press(MAIN, button)


def apply_and_close(user, window):
    user.press(window, "Apply")
    answer(user, "Apply Changes?", "Yes")
    answer(user, "Saved!", "OK")
    user.press(window, "Close")
