"""Sends the member list, and for an installation the update file, to the machine and runs the module there."""
from ansible.plugins.action import ActionBase


class ActionModule(ActionBase):
    TRANSFERS_FILES = True

    def run(self, tmp=None, task_vars=None):
        super().run(tmp, task_vars)
        arguments = dict(self._task.args)
        members = self._remote("members")
        # Not as an argument, because the journal of the machine keeps the arguments.
        self._transfer_data(members, arguments["members"])
        arguments["members"] = members
        if "file" in arguments:
            arguments["file"] = self._transfer_file(arguments["file"], self._remote("zelto-update.tar.gz"))
        return self._execute_module("install_update", arguments, task_vars=task_vars)

    def _remote(self, name):
        return self._connection._shell.join_path(self._connection._shell.tmpdir, name)
