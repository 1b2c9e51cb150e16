import shutil
import subprocess
from pathlib import Path

from place import LONG, DesktopTest


class Secrecy(DesktopTest):
    def test_other_users_see_the_password_only_during_a_credential_check(self):
        account, stranger = self.account(), self.account(sudo=False)
        path = self.update("update.gz", members=self.members(file=(b"new", 0o644)))
        script = shutil.copy(Path(__file__).with_name("scanner.py"), self.folder)
        scanner = self.enterContext(subprocess.Popen(
            ["runuser", "-u", stranger.name, "--", "/usr/bin/python3", "-B", script],
            cwd="/", stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True))
        print(account.password, file=scanner.stdin, flush=True)
        self.assertEqual(scanner.stdout.readline(), "looking\n")
        for _ in range(20 if LONG else 1):
            with self.running(account) as utility:
                for _ in range(9 if LONG else 5):  # some processes are too short-lived to be seen every time
                    utility.install(path)
                    utility.outcome()
                    utility.answer("Install Another")
        seen = scanner.communicate()[0].splitlines()
        check = f"cmdline: 'su {account.name} -c echo *** | sudo -S /usr/bin/true '"
        self.assertIn(check, seen, "the scanner misses the command of su")
        self.assertLessEqual(set(seen), {check, check.replace(f"su {account.name}", "bash")})
