#!/usr/bin/env python3
"""Takes the walk of the README in the program as a user does, on a display of its own, makes a card by keyboard
alone, and ends the program in mid-work.

usage: end_to_end.py EXECUTABLE DATABASE DRAG_SOURCE
"""

import os
import re
import sqlite3
import subprocess
import sys
import tempfile
import time

from bitmap import read_bitmap, write_bitmap
from desktop import Display, Failure, Program, check, wait_for

MAIN = "Varnholt Set Creator"
SET = "The Lamp Islands"
# Places within the main window in pixels: the toolbar's buttons, and the panel under it.
TOOLBAR = {"card": 48, "character": 73, "large": 98, "createall": 130, "exporttotext": 155, "print": 180}
TOOLBAR_Y = 15
PANEL_Y = 31
# Places within the editor of cards, in the corner of the area under the panel.
WALK = [(33, 145), (79, 145), (211, 145), (257, 145)]  # << < > >>
CARD_LIST = (438, 145)
BLANK = [(150, 600), (500, 300), (300, 112)]  # in an editor without cards; the last is its title
TITLE = (550, 203)
TYPE = (540, 232)
SELECT_PICTURE = (428, 358)
BOLD = (567, 455)
INFORMATION = (567, 560)
SELECT_BACKGROUND = (455, 906)
BACK = (550, 962)
FRONT = (15, 165, 148, 252)  # left, top, width, height of the preview
PICTURE = (88, 255)
HANDLE = (88, 310)
SAMPLE = "The Saltwind Coast"
CARD_TEXTS = [
    ("Keeper of the Lamp", "C2 Keeper of the Lamp.BMP"),
    ("Salt Wind", "C2 Salt Wind.BMP"),
    ("Drowned Bell", "C2 Drowned Bell.BMP"),
]


class Walk:
    """What the user does, step by step; each step ends when its result can be seen."""

    def __init__(self, display, program, drag_source, folder):
        self.display = display
        self.program = program
        self.drag_source = drag_source
        self.folder = folder
        self.set_id = None
        self.picture = os.path.join(folder, "green.bmp")
        write_bitmap(self.picture, 300, 300, (20, 200, 40))

    def toolbar(self, button):
        main = self.display.focus(MAIN)
        self.display.click(main, TOOLBAR[button], TOOLBAR_Y)

    def confirm(self, title):
        """Enter in a dialog, until it is gone: the first one may go to a list of completions."""
        def closed():
            if self.display.window(title) is None:
                return True
            self.display.key("Return")
            time.sleep(0.3)
            return self.display.window(title) is None
        wait_for(f'the end of "{title}"', closed)

    def choose_file(self, title, path, owner=MAIN):
        self.display.focus(title)
        self.display.key("ctrl+a")
        self.display.type(path)
        self.confirm(title)
        self.display.focus(owner)

    def start(self):
        self.program.start()
        self.display.focus(MAIN)

    def click(self, place):
        self.display.click(self.display.focus(MAIN), *place)

    def front(self):
        return self.display.picture(*FRONT)

    def changes(self, what, before):
        """Waits until the preview differs from what it was, and gives what it is."""
        return wait_for(what, lambda: (now := self.front()) != before and now)

    def see_sample(self):
        """Steps 1 to 3: the sample set is the chosen one, and the buttons walk through its cards."""
        query = ("SELECT Title FROM tblCard c JOIN tblSet s ON c.SetID = s.SetID WHERE SetName = ? AND "
                 "Nr = (SELECT {} FROM tblCard WHERE SetID = s.SetID)")
        first, last = query.format("MIN(Nr)"), query.format("MAX(Nr)")
        self.toolbar("card")
        one = wait_for("the preview", lambda: len(set(now := self.front())) > 100 and now)
        shown = [one]
        for button in (3, 1, 2, 0):
            self.click(WALK[button])
            shown.append(self.changes(f"button {button}", shown[-1]))
        check(shown[0] == shown[4] and shown[1] == shown[3] != shown[2], "the buttons lead elsewhere")
        for button, which in ((0, first), (3, last)):
            self.click(WALK[button])
            title = self.program.value(which, SAMPLE)
            self.click(TITLE)
            self.display.key("End", "x")
            self.program.wait_value(title + "x", which, SAMPLE)
            self.display.key("BackSpace")
            self.program.wait_value(title, which, SAMPLE)

    def duplicate_from_a_field(self):
        """The desktop has a meaning of its own for the key in a text, which it must not get."""
        texts = "SELECT group_concat(Title || Information) FROM (SELECT * FROM tblCard ORDER BY CardID LIMIT {})"
        for field in (TITLE, INFORMATION):
            count = self.program.value("SELECT COUNT(*) FROM tblCard")
            before = self.program.value(texts.format(count))
            self.click(field)
            self.display.key("ctrl+a", "ctrl+d")
            self.program.wait_value(count + 1, "SELECT COUNT(*) FROM tblCard")
            check(self.program.value(texts.format(count)) == before, "the key has changed a text")

    def make_set(self):
        """Step 4: by the mouse but for the name."""
        self.click(((480 + 1095 // 2) // 15, PANEL_Y + (480 + 375 // 2) // 15))
        dialog = self.display.focus("Set")
        self.display.type(SET)
        self.display.click_twips(dialog, 1200 + 1500, 720 + 157)
        self.display.key("Home", "Return")
        self.display.click_twips(dialog, 1200 + 120, 1560 + 127)
        self.display.click_twips(dialog, 1200 + 120, 1200 + 127)
        self.display.click_twips(dialog, 1860 + 600, 2100 + 187)
        self.display.gone("Set")
        self.program.wait_value(2, "SELECT EditionID FROM tblSet WHERE SetName = ?", SET)
        self.set_id = self.program.value("SELECT SetID FROM tblSet WHERE SetName = ?", SET)

    def check_stored_file(self, path, query):
        """A stored file has zero bytes behind it."""
        with open(path, "rb") as file:
            data = file.read()
        self.program.wait_value(data, f"SELECT substr(({query}), 1, {len(data)})")

    def card(self, column, number):
        return self.program.value(f"SELECT {column} FROM tblCard WHERE SetID = ? AND Nr = ?",
                                  self.set_id, number)

    def wait_card(self, number, column, expected):
        self.program.wait_value(expected, f"SELECT {column} FROM tblCard WHERE SetID = ? AND Nr = ?",
                                self.set_id, number)

    def add_card(self, number, title):
        self.display.focus(MAIN)
        self.display.key("ctrl+n")
        self.wait_card(number, "Title", f"CARD {number}")
        self.display.type(title)
        self.wait_card(number, "Title", title)

    def make_cards(self):
        """Step 5: a click on any place of the empty editor gives it the keyboard."""
        for number, (title, _) in enumerate(CARD_TEXTS, 1):
            self.click(BLANK[number - 1])
            self.add_card(number, title)

    def choose_in_list(self, place, column):
        before = self.card(column, 3)
        self.click(place)
        self.display.key("Down", "Return")
        wait_for(f"another {column}", lambda: self.card(column, 3) != before)

    def wait_scale(self, scale):
        """Of the one picture that has an original beside it in the set."""
        query = ("SELECT ROUND(Scale, 4) FROM tblOriginal o JOIN tblCard c ON o.RecordID = c.CardID "
                 "WHERE TableName = 'tblCard' AND SetID = ? AND Nr = 3")
        self.program.wait_value(round(scale, 4), query, self.set_id)

    def drop_picture(self):
        """Step 7: it fills the frame, and the wheel, the keyboard and the menu change its size."""
        fill = 137 / 300
        source = subprocess.Popen([self.drag_source, self.picture, "1200", "1002"],
                                  env={**self.display.environment(), "QT_QPA_PLATFORM": "xcb"})
        try:
            window = wait_for("the file", lambda: self.display.window("Files"))
            self.display.xdotool("mousemove", "--window", window, 30, 10, "mousedown", 1)
            for step in range(5, -1, -1):
                time.sleep(0.1)
                self.display.xdotool("mousemove", PICTURE[0] + 60 * step, PICTURE[1] + 40 * step)
            time.sleep(0.3)
            self.display.xdotool("mouseup", 1)
            self.wait_scale(fill)
        finally:
            source.kill()
            source.wait()
        self.check_stored_file(self.picture, "SELECT File FROM tblOriginal WHERE OriginalID = "
                                             "(SELECT MAX(OriginalID) FROM tblOriginal)")
        self.display.focus(MAIN)
        self.display.xdotool("mousemove", *PICTURE, "click", 4)
        self.wait_scale(fill * 2 ** (1 / 8))
        self.display.key("Menu")
        self.display.key("f")
        self.wait_scale(103 / 300)
        self.display.xdotool("mousemove", *PICTURE, "click", 3)
        self.display.key("i")
        self.wait_scale(fill)
        self.display.key("Delete")
        self.wait_card(3, "Picture", None)

    def choose_picture(self):
        """Step 7 by the button: the picture, its place and the height of its frame."""
        self.click(SELECT_PICTURE)
        self.choose_file("Choose picture", self.picture)
        self.check_stored_file(
            self.picture, f"SELECT Picture FROM tblCard WHERE SetID = {self.set_id} AND Nr = 3")
        main = self.display.focus(MAIN)
        self.display.drag(main, PICTURE, (PICTURE[0] + 10, PICTURE[1] - 7))
        self.wait_card(3, "PicLeft", 150)
        self.wait_card(3, "PicTop", -105)
        self.display.key("Left", "Down")
        self.wait_card(3, "PicLeft", 135)
        self.wait_card(3, "PicTop", -90)
        self.display.drag(main, HANDLE, (HANDLE[0], HANDLE[1] - 20))
        self.wait_card(3, "PicHeight", 85)
        self.display.key("shift+Down")
        self.wait_card(3, "PicHeight", 86)

    def type_texts(self):
        """Step 8: one letter becomes a word, whose rest is selected and typed over."""
        before = self.front()
        self.click(BOLD)
        self.display.type("S")
        self.wait_card(3, "BoldText", "STRENGTH ")
        self.display.key("End")
        self.display.type("4")
        self.wait_card(3, "BoldText", "STRENGTH 4")
        self.click(INFORMATION)
        text = "Roll a die."
        for i, letter in enumerate(text):
            self.display.type(letter)
            self.wait_card(3, "Information", text[:i + 1])
            if letter != " ":
                before = self.changes(f"the preview of {letter}", before)

    def choose_background(self):
        background = os.path.join(self.folder, "blue.bmp")
        write_bitmap(background, 152, 256, (20, 40, 200))
        before = self.front()
        self.click(SELECT_BACKGROUND)
        self.choose_file("Choose picture", background)
        self.changes("the background", before)

    def create_cards(self):
        """Step 10."""
        cards = os.path.join(self.folder, "cards")
        os.mkdir(cards)
        self.toolbar("createall")
        dialog = self.display.focus("Create Cards")
        self.display.click_twips(dialog, 1740 + 600, 375 + 165)
        self.display.type(cards)
        self.program.wait_value(cards, "SELECT SaveTo FROM tblSet WHERE SetID = ?", self.set_id)
        self.display.click_twips(dialog, 1740 + 600, 1215 + 165)
        self.display.type("BMP")
        self.display.key("Return")
        self.display.click_twips(dialog, 120 + 360 + 120, 3240 + 720 + 127)
        self.display.click_twips(dialog, 5280 + 900, 4560 + 217)
        self.end_of_run()
        self.check_cards(cards)

    def end_of_run(self):
        self.display.focus("Create cards")
        self.confirm("Create cards")
        self.display.focus("Create Cards")
        self.display.key("Escape")
        self.display.gone("Create Cards")
        self.display.focus(MAIN)

    def check_cards(self, cards):
        names = sorted(os.listdir(cards))
        check(names == sorted(name for _, name in CARD_TEXTS), f"files: {names}")
        for name in names:
            width, height, pixels = read_bitmap(os.path.join(cards, name))
            check((width, height) == (304, 256), f"{name}: {width} by {height}")
            has_picture = bytes((20, 200, 40)) in pixels
            check(has_picture == (name == CARD_TEXTS[2][1]), f"{name}: picture {has_picture}")
            check(len(pixels) > 100, f"{name}: no card back")

    def kill_while_typing(self, seconds):
        """Ends the program by force so many seconds after a keystroke: at most that one may be lost."""
        self.display.focus(MAIN)
        count = self.program.value("SELECT MAX(Nr) FROM tblCard WHERE SetID = ?", self.set_id)
        self.display.key("ctrl+n")
        self.wait_card(count + 1, "Title", f"CARD {count + 1}")
        typed = ""
        for letter in "abcdefgh":
            typed += letter
            self.display.key(letter)
            self.wait_card(count + 1, "Title", typed)
        self.display.key("i")
        time.sleep(seconds)
        self.program.kill()
        self.start()
        found = self.card("Title", count + 1)
        check(found in (typed, typed + "i"), f"after the kill the title reads {found!r}")
        for number, (title, _) in enumerate(CARD_TEXTS, 1):
            check(self.card("Title", number) == title, f"card {number} lost its title")
        connection = sqlite3.connect(self.program.database)
        result = connection.execute("PRAGMA integrity_check").fetchall()
        connection.close()
        check(result == [("ok",)], f"integrity: {result}")

    def choose_set(self):
        """After a start the list of sets has the keyboard; the new one is reached by its first letters."""
        self.display.focus(MAIN)
        self.display.key("alt+Down")
        self.display.type(SET)
        self.display.key("Return")

    def make_card_by_keyboard(self):
        """From the start to the file, and no mouse."""
        number = 1 + self.program.value("SELECT MAX(Nr) FROM tblCard WHERE SetID = ?", self.set_id)
        self.choose_set()
        self.display.key("F6", "Tab", "space")  # past the exit button
        first = self.card("CardBackID", 1)
        self.display.key("alt+a")  # a list knows the key for a new card, too
        self.add_card(number, "Typed Tide")
        check(self.card("CardBackID", 1) == first, "the title went to the list of backs")
        kind, back = self.card("CardTypeID", number), self.card("CardBackID", number)
        self.display.key("alt+y", "Down")
        wait_for("another type", lambda: self.card("CardTypeID", number) != kind)
        # By Tab from the frames, which are left as they were, past Resize to the button.
        self.display.key("alt+f")
        self.wait_card(number, "UseFrame", 0)
        self.display.key("alt+f")
        self.wait_card(number, "UseFrame", -1)
        self.display.key("Tab", "Tab", "space")
        self.choose_file("Choose picture", self.picture)
        # The picture is the stop before the title.
        self.display.key("alt+t", "shift+Tab", "Left", "Left", "shift+Up")
        self.wait_card(number, "PicLeft", -30)
        self.wait_card(number, "PicHeight", 104)
        self.display.key("alt+o")
        self.display.type("C")
        self.wait_card(number, "BoldText", "CRAFT ")
        self.display.key("Tab")
        self.display.type("The tide turns.")
        self.wait_card(number, "Information", "The tide turns.")
        self.display.key("alt+a", "Down")
        wait_for("another back", lambda: self.card("CardBackID", number) != back)
        # F6 to the panel and the toolbar, where the last button was that of the cards.
        self.display.key("F6", "F6", "Tab", "Tab", "Tab", "space")
        self.display.focus("Create Cards")
        cards = os.path.join(self.folder, "typed")
        os.mkdir(cards)
        self.display.key("alt+t", "ctrl+a")
        self.display.type(cards)
        self.program.wait_value(cards, "SELECT SaveTo FROM tblSet WHERE SetID = ?", self.set_id)
        self.display.key("alt+v")
        self.display.type("J")
        self.display.key("Tab", "Tab", "Tab", "Tab", "space", "Tab", "space")
        self.end_of_run()
        check(any("Typed" in name and name.endswith(".JPG") for name in os.listdir(cards)),
              f"files: {os.listdir(cards)}")
        self.display.key("ctrl+F4")

    def make_character(self):
        self.toolbar("character")
        self.display.focus(MAIN)
        self.display.key("ctrl+n")
        of_set = f"FROM tblCharacter WHERE SetID = {self.set_id}"
        self.program.wait_value(1, "SELECT COUNT(*) " + of_set)
        self.display.type("Lamplighter")
        self.program.wait_value("Lamplighter", "SELECT Name " + of_set)
        self.display.key("alt+f")
        self.program.wait_value(0, "SELECT UseFrame " + of_set)
        # Past the two buttons of the picture.
        self.display.key("Tab", "Tab", "Tab", "space")
        self.choose_file("Choose playing piece picture", self.picture)
        self.check_stored_file(self.picture, "SELECT PlayingPiece " + of_set)
        check(self.program.value("SELECT Picture " + of_set) is None, "the piece went to the picture")
        self.toolbar("character")

    def make_large_card(self):
        self.toolbar("large")
        self.display.key("ctrl+n")
        of_set = f"FROM tblLargeCard WHERE SetID = {self.set_id}"
        self.program.wait_value(1, "SELECT COUNT(*) " + of_set)
        self.display.type("The Sunken Stair")
        self.program.wait_value("The Sunken Stair", "SELECT Title " + of_set)
        self.toolbar("large")

    def choose_first(self, dialog, list_place, ok_place):
        """In a catalogue: the first entry of the list, and OK."""
        left, top = list_place
        self.display.click(dialog, left // 15 + 60, top // 15 + 34)
        self.display.click_twips(dialog, *ok_place)

    def make_type(self):
        """A new type through its catalogue, for the card on show: the first one."""
        self.display.key("alt+y", "Tab", "space")
        dialog = self.display.focus("Card Type")
        self.display.click_twips(dialog, 120 + 120 + 600, 3480 + 360 + 142)
        self.display.type("AAA")
        self.display.key("alt+a")
        query = "SELECT CardTypeID FROM tblCardType WHERE UpperLeft = 'AAA'"
        type_id = wait_for("the type", lambda: self.program.value(query))
        self.choose_first(dialog, (120, 240), (7080 + 667, 2520 + 187))
        self.display.gone("Card Type")
        self.display.focus(MAIN)
        self.wait_card(1, "CardTypeID", type_id)

    def make_back(self):
        self.display.key("alt+a", "Tab", "space")
        dialog = self.display.focus("Cardback")
        self.display.key("alt+l")
        self.choose_file("Choose picture for Card back", self.picture, "Cardback")
        self.display.click_twips(dialog, 240 + 960 + 1500, 4800 + 840 + 142)
        self.display.type("AAA back")
        self.display.key("alt+n")
        query = "SELECT CardBackID FROM tblCardBack WHERE BackText = 'AAA back'"
        back_id = wait_for("the back", lambda: self.program.value(query))
        self.check_stored_file(self.picture, f"SELECT Picture FROM tblCardBack WHERE CardBackID = {back_id}")
        self.choose_first(dialog, (240, 480), (4800 + 667, 3840 + 187))
        self.display.gone("Cardback")
        self.display.focus(MAIN)
        self.wait_card(1, "CardBackID", back_id)

    def move_card(self):
        """The first card one down in the card list."""
        self.display.click(self.display.focus(MAIN), *CARD_LIST)
        dialog = self.display.focus("Card List")
        self.display.click(dialog, 120 // 15 + 60, 120 // 15 + 34)
        self.display.click_twips(dialog, 7440 + 630, 660 + 217)
        for number, (title, _) in enumerate([CARD_TEXTS[1], CARD_TEXTS[0], CARD_TEXTS[2]], 1):
            self.wait_card(number, "Title", title)
        self.display.key("Escape")
        self.display.gone("Card List")

    def export_texts(self):
        path = os.path.join(self.folder, "texts.txt")
        self.toolbar("exporttotext")
        self.choose_file("Save set as text", path, "Save text")
        self.confirm("Save text")
        with open(path, "rb") as file:
            lines = file.read().decode("cp1252").split("\r\n")
        for line in ["Set: " + SET, "7 Cards", "Bold: STRENGTH 4", "Text: Roll a die.", "1 Characters",
                     "Lamplighter", "1 Large Cards", "The Sunken Stair"]:
            check(line in lines, f"not in the listing: {line}")
        titles = [line for line in lines if line in dict(CARD_TEXTS)]
        check(titles == [CARD_TEXTS[i][0] for i in (1, 0, 2)], f"order of the listing: {titles}")

    def print_sheets(self):
        """Two of the cards on paper of another size, by keyboard from the first field on."""
        path = os.path.join(self.folder, "sheets.pdf")
        self.toolbar("print")
        self.display.focus("Print sheets")
        self.display.key("Down", "alt+k", "Home", "alt+i")
        for _ in ("characters", "pieces", "large cards"):
            self.display.key("Tab", "space")
        self.display.key("alt+n")
        self.display.type("2-3")
        self.display.key("alt+f")
        self.choose_file("Save sheets as", path, "Print sheets")
        wait_for("the word that it is done", lambda: self.display.count("Print sheets") == 2)
        self.display.focus("Print sheets")
        self.display.key("Return")
        wait_for("the end of the word", lambda: self.display.count("Print sheets") == 1)
        self.display.focus("Print sheets")
        self.display.key("Escape")
        self.display.gone("Print sheets")
        told = subprocess.run(["pdfinfo", path], text=True, capture_output=True, check=True)
        check(told.stderr == "" and re.search(r"Pages: +1\n", told.stdout) and "612 x 792" in told.stdout,
              f"the file of sheets: {told.stdout}{told.stderr}")
        text = subprocess.run(["pdftotext", path, "-"], text=True, capture_output=True, check=True).stdout
        found = [title for title, _ in CARD_TEXTS if title in text]
        check(found == [CARD_TEXTS[0][0], CARD_TEXTS[2][0]], f"on the sheet: {text}")

    def run(self):
        self.start()
        self.see_sample()
        self.duplicate_from_a_field()
        self.make_set()
        self.make_cards()
        self.choose_in_list(TYPE, "CardTypeID")
        self.drop_picture()
        self.choose_picture()
        self.type_texts()
        self.choose_in_list(BACK, "CardBackID")
        self.choose_background()
        self.create_cards()
        for seconds in (0, 0.002, 0.006):
            self.kill_while_typing(seconds)
            if seconds == 0:
                self.make_card_by_keyboard()
            else:
                self.choose_set()
            self.toolbar("card")
        self.make_type()
        self.make_back()
        self.move_card()
        self.make_character()
        self.make_large_card()
        self.export_texts()
        self.print_sheets()


def main():
    executable, database, drag_source = sys.argv[1:]
    with tempfile.TemporaryDirectory() as folder:
        display = Display(1280, 1024)
        program = Program(display, executable, database, folder)
        try:
            Walk(display, program, drag_source, folder).run()
        except Failure as failure:
            shot = os.path.abspath("end_to_end.png")
            display.screenshot(shot)
            print(f"{failure}\nThe display then: {shot}", file=sys.stderr)
            print(program.log(), file=sys.stderr)
            return 1
        finally:
            Program.kill_all()
            display.close()
    return 0


if __name__ == "__main__":
    sys.exit(main())
