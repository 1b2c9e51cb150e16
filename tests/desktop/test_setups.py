import contextlib
import datetime
import os
import subprocess
import tarfile
from pathlib import Path

from desktop.accounts import run
from desktop.updates import make_update
from desktop.utility import AUTHENTICATE, MAIN, PASSWORD_FIELD, Utility
from place import PROGRAM, DesktopTest

RECORD = Path("/tmp/.KVX.Content")
OWN_PROMPT = r"""
int pam_prompt(void *, int, char **, const char *, ...);
int pam_set_item(void *, int, const void *);
int pam_sm_setcred(void *handle, int flags, int count, const char **words) { return 0; }
int pam_sm_authenticate(void *handle, int flags, int count, const char **words) {
  char *answer = 0;
  int failure = pam_prompt(handle, 1, &answer, "Say the word: ");
  return failure ? failure : pam_set_item(handle, 6, answer);
}
"""


class SetUps(DesktopTest):
    @contextlib.contextmanager
    def defaults(self, account, setting):
        file = Path("/etc/sudoers.d", account.name)
        file.write_text(f"Defaults:{account.name} {setting}\n")
        try:
            yield
        finally:
            file.unlink()

    @contextlib.contextmanager
    def pam(self, account, line):
        """Puts the line first in the PAM configuration of `sudo` for this account."""
        service = Path("/etc/pam.d", account.name)
        service.write_text(line + "\n" + Path("/etc/pam.d/sudo").read_text())
        try:
            with self.defaults(account, f"pam_service={service.name}, pam_login_service={service.name}"):
                yield
        finally:
            service.unlink()

    def own_prompt(self, account):
        module = self.folder / "own_prompt.so"
        subprocess.run(["c++", "-x", "c", "-shared", "-fPIC", "-o", module, "-", "-l:libpam.so.0"],
                       input=OWN_PROMPT, text=True, check=True)
        return self.pam(account, f"auth required {module}")

    @contextlib.contextmanager
    def ageing(self, account):
        changed = datetime.date.today() - datetime.timedelta(days=6)
        run(["chage", "-M", "10", "-W", "7", "-d", str(changed), account.name])
        yield

    def test_update_installs_and_a_failure_shows_only_what_tar_wrote(self):
        account = self.account()
        set_ups = {
            "visiblepw": self.defaults(account, "visiblepw"),
            "no ticket": self.defaults(account, "timestamp_timeout=0"),
            "override": self.defaults(account, "passprompt_override"),
            "own prompt": self.own_prompt(account),
            "message": self.pam(account, "auth optional pam_echo.so Sessions are recorded."),
            "ageing": self.ageing(account)}
        for kind, set_up in set_ups.items():
            with self.subTest(kind), set_up, self.running(account) as utility:
                members = self.members(**{kind: (b"new", 0o644)})
                path = self.update("a.gz", kind, members=members)
                utility.fill("Patchfile:", path)
                utility.shows(kind, "1.0", "A sample update.")
                utility.start()
                utility.outcome()
                self.assert_installed(members)
                utility.answer("Install Another")
                utility.fill("Patchfile:", path)
                utility.until(utility.can_update)
                os.truncate(path, 5)
                utility.start()
                self.assertRegex("\n".join(utility.dialog("OK")),
                                 r"\ABad update file\nErrors .*\n\n(\n|(gzip|tar): .*\n)+\Z")

    def test_unsupported_setup_is_refused_with_its_reason(self):
        reasons = {"requiretty": "sudo accepts this account only on a terminal (requiretty).",
                   "rootpw": "sudo asks for the password of another account (rootpw or targetpw)."}
        for setting, reason in reasons.items():
            account = self.account()
            if setting == "requiretty" and "sudo-rs" in run(["sudo", "--version"]):
                continue  # sudo-rs does not support this setting
            with self.subTest(setting), self.defaults(account, setting), Utility(account.name, PROGRAM) as utility:
                utility.window(AUTHENTICATE)
                utility.listen("object:property-change:accessible-description")
                utility.try_pair(account.name, account.password)
                utility.until(lambda: utility.description(PASSWORD_FIELD) == reason)
                self.assertEqual([name for name, _ in utility.heard()], [PASSWORD_FIELD])
                self.assertEqual(utility.windows(), [AUTHENTICATE])


class Checks(DesktopTest):
    def test_check_writes_only_the_record(self):
        target = self.folder / "target"
        target.mkdir()
        record = tarfile.TarInfo(str(RECORD))

        def archive(name, *members):
            with tarfile.open(self.folder / name, "w:gz", format=tarfile.GNU_FORMAT) as file:
                for member, kind, link in members:
                    entry = tarfile.TarInfo(str(member))
                    entry.type, entry.linkname, entry.mode = kind, str(link), 0o755
                    file.addfile(entry)
                file.addfile(record)
            return str(self.folder / name)

        folder, file, link = tarfile.DIRTYPE, tarfile.REGTYPE, tarfile.SYMTYPE
        make_update(self.folder / "huge.gz", record=bytes(100 << 20), level=1)
        attacks = [
            archive("inside.gz", (RECORD, folder, ""), (RECORD / "evil", file, "")),
            archive("above.gz", (RECORD, folder, ""), (f"{RECORD}/../{target.relative_to('/tmp')}/evil", file, "")),
            archive("link.gz", (RECORD, link, target), (RECORD / "evil", file, "")),
            archive("nested.gz", (RECORD, folder, ""), (RECORD / "to", link, target), (RECORD / "to/evil", file, "")),
            str(self.folder / "huge.gz")]
        utility = self.authenticated(self.account())
        for path in attacks:
            with self.subTest(path):
                utility.fill("Patchfile:", path)
                utility.until(lambda: "Keep" in utility.buttons(MAIN) or utility.can_update(), 60)
                self.assertTrue(RECORD.is_file() and not RECORD.is_symlink())
                self.assertLessEqual(RECORD.stat().st_size, 65536)
                self.assertEqual(os.listdir(target), [])
                if "Keep" in utility.buttons(MAIN):
                    utility.answer("Cancel")
                utility.fill("Patchfile:", "")
