import secrets
from pathlib import Path

from desktop.accounts import Account
from desktop.utility import AUTHENTICATE, MAIN, Utility
from place import PROGRAM, DesktopTest


class RightPassword(DesktopTest):
    def test_main_window_opens_at_its_position_for_any_user(self):
        account, other = self.account(), self.account(sudo=False)
        for who, starter in ("itself", account.name), ("another", other.name), ("root", "root"):
            with self.subTest(started_by=who), Utility(starter, PROGRAM) as utility:
                utility.window(AUTHENTICATE)
                self.assertNotIn(MAIN, utility.shown())
                utility.try_pair(account.name, account.password)
                utility.window(MAIN)
                left, top, width, _ = utility.place(MAIN)
                self.assertEqual(width, 488)
                self.assertAlmostEqual(left, (1280 - 488) / 2, delta=1)
                self.assertAlmostEqual(top, (1024 - 298) / 3, delta=1)


class OddPasswords(DesktopTest):
    PASSWORDS = {"apostrophe": "it's", "quote": 'a"b', "variable": "$HOME", "backticks": "`id`",
                 "escape": r"a\nb", "option": "-n", "blank": "two words", "operators": "(x)&y",
                 "beyond ASCII": "pä$$", "long": secrets.token_hex(100)}

    def test_odd_passwords_authenticate_and_install(self):
        for number, (kind, password) in enumerate(self.PASSWORDS.items()):
            members = self.members(**{str(number): (b"new", 0o644)})
            path = self.update(f"{number}.tgz", members=members)
            with self.subTest(kind), Account(password) as account, Utility(account.name, PROGRAM) as utility:
                utility.try_pair(account.name, password)
                utility.window(MAIN)
                utility.install(path)
                utility.outcome()
                utility.click("Quit")
                self.assertEqual(utility.exit_status(), 0)
                self.assert_installed(members)


class Refusals(DesktopTest):
    def test_valid_password_has_no_effect_after_three_failures(self):
        account = self.account()
        reached = Path("~" + account.name).expanduser() / "reached"
        utility = self.enterContext(Utility(account.name, PROGRAM))
        utility.window(AUTHENTICATE)
        idle = account.processes()
        for bells in 1, 2, 3:
            utility.try_pair(account.name, secrets.token_hex(8))
            utility.until(lambda: utility.bells() == bells)
        # `su` starts the shell only for the valid password.
        account.use_shell(self.script("shell", f'touch {reached}; exec /bin/bash "$@"'))
        utility.try_pair(account.name, account.password)
        utility.until(reached.exists)
        utility.until(lambda: account.processes() <= idle)
        self.assertEqual(utility.windows(), [AUTHENTICATE])
        utility.key("alt+F4")
        self.assertEqual((utility.exit_status(), utility.bells()), (0, 3))
        self.assertNotIn(MAIN, utility.shown())

    def test_account_without_rights_is_refused_and_can_cancel(self):
        account = self.account(sudo=False)
        utility = self.enterContext(Utility(account.name, PROGRAM))
        utility.try_pair(account.name, account.password)
        utility.until(lambda: utility.bells() == 1)
        utility.click("Cancel")
        self.assertEqual(utility.exit_status(), 0)
        self.assertNotIn(MAIN, utility.shown())


class OddUserNames(DesktopTest):
    TRIPLES = ("--help", "-V", "--version"), ("x; true #", "$(true)", "a b"), ("-", "")

    def test_odd_user_names_are_refused(self):
        account = self.account()
        for starter, names in [(who, names) for who in (account.name, "root") for names in self.TRIPLES]:
            with self.subTest(names, as_root=starter == "root"), Utility(starter, PROGRAM) as utility:
                for bells, name in enumerate(names, 1):
                    utility.try_pair(name, account.password)
                    utility.until(lambda: utility.bells() == bells)
                self.assertEqual(utility.windows(), [AUTHENTICATE])
                self.assertNotIn(MAIN, utility.shown())
