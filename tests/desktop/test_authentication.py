import secrets

from desktop.updates import assert_installed
from desktop.utility import AUTHENTICATE, MAIN, Utility
from base import PROGRAM, DesktopTest


class Accounts(DesktopTest):
    def test_any_user_authenticates_with_any_password_and_installs(self):
        other = self.account(sudo=False).name
        for kind, password, starter in [("quotes", """it's a"b""", None), ("expansions", r"$HOME`id`\n", other),
                                        ("option", "-n", "root"), ("operators and non-ASCII", "(x) & pä$$", None),
                                        ("long", secrets.token_hex(100), None)]:
            account, members = self.account(password), self.members(**{kind: (b"new", 0o644)})
            path = self.update(f"{kind}.gz", members=members)
            with self.subTest(kind, started_by=starter), Utility(starter or account.name, PROGRAM) as utility:
                utility.authenticate(account.name, password)
                self.assertEqual(utility.place(MAIN), [(1280 - 488) // 2, (1024 - 298) // 3, 488])
                utility.install(path)
                utility.outcome()
                utility.quit()
                assert_installed(members)

    def test_odd_user_names_are_refused(self):
        account, triples = self.account(), [("--help", "-V", "--version"), ("x; true #", "$(true)", "a b"), ("-", "")]
        for starter, names in [(who, names) for who in (account.name, "root") for names in triples]:
            with self.subTest(names, as_root=starter == "root"), Utility(starter, PROGRAM) as utility:
                for number, name in enumerate(names, 1):
                    utility.try_pair(name, account.password)
                    utility.refusal(stays=number == 3)
                self.assertEqual(utility.windows(), [AUTHENTICATE])
