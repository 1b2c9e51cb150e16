import secrets

from desktop.accounts import Account
from desktop.updates import assert_installed
from desktop.utility import AUTHENTICATE, MAIN, Utility
from base import PROGRAM, DesktopTest


class RightPassword(DesktopTest):
    def test_main_window_opens_at_its_position_for_any_user(self):
        account, other = self.account(), self.account(sudo=False)
        for who, starter in ("itself", account.name), ("another", other.name), ("root", "root"):
            with self.subTest(started_by=who), Utility(starter, PROGRAM) as utility:
                utility.authenticate(account.name, account.password)
                left, top, width, _ = utility.manager.place(MAIN)
                self.assertEqual(width, 488)
                self.assertAlmostEqual(left, (1280 - 488) / 2, delta=1)
                self.assertAlmostEqual(top, (1024 - 298) / 3, delta=1)


class OddPasswords(DesktopTest):
    PASSWORDS = {"quotes": """it's a"b""", "expansions": r"$HOME`id`\n", "option": "-n",
                 "operators and non-ASCII": "(x) & pä$$", "long": secrets.token_hex(100)}

    def test_odd_passwords_authenticate_and_install(self):
        for number, (kind, password) in enumerate(self.PASSWORDS.items()):
            members = self.members(**{str(number): (b"new", 0o644)})
            path = self.update(f"{number}.tgz", members=members)
            with self.subTest(kind), Account(password) as account, Utility(account.name, PROGRAM) as utility:
                utility.authenticate(account.name, password)
                utility.install(path)
                utility.outcome()
                utility.quit()
                assert_installed(members)


class Refusals(DesktopTest):
    TRIPLES = ("--help", "-V", "--version"), ("x; true #", "$(true)", "a b"), ("-", "")

    def test_account_without_rights_is_refused_and_can_cancel(self):
        account = self.account(sudo=False)
        utility = self.enterContext(Utility(account.name, PROGRAM))
        utility.try_pair(account.name, account.password)
        self.assertEqual(utility.refusal(), "This account may not use sudo.")
        utility.click("Cancel")
        self.assertEqual(utility.exit_status(), 0)

    def test_odd_user_names_are_refused(self):
        account = self.account()
        for starter, names in [(who, names) for who in (account.name, "root") for names in self.TRIPLES]:
            with self.subTest(names, as_root=starter == "root"), Utility(starter, PROGRAM) as utility:
                for number, name in enumerate(names, 1):
                    utility.try_pair(name, account.password)
                    utility.refusal(stays=number == 3)
                self.assertEqual(utility.windows(), [AUTHENTICATE])
