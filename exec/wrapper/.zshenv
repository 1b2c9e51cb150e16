case $PATH in "$ZDOTDIR":*) ;; *) PATH=$ZDOTDIR:$PATH ;; esac
unset ZDOTDIR
