;;; kigou.el --- insert symbols that are picked in the browser of kigou  -*- lexical-binding: t -*-

;;; Commentary:

;; (load "PREFIX/share/kigou/insert/kigou") brings M-x kigou-insert.  It binds no key; C-c and a
;; letter are yours:
;;
;;   (global-set-key (kbd "C-c k") #'kigou-insert)
;;
;; The browser runs in a terminal of Emacs, so Ctrl+C is C-c C-c there, and Escape is to be
;; pressed twice.

;;; Code:

(require 'subr-x)
(require 'term)

(defun kigou--take (file)
  "Return the text in FILE without its last line end, and delete FILE."
  (prog1 (with-temp-buffer
           (let ((coding-system-for-read 'utf-8-unix))
             (insert-file-contents file))
           (string-trim-right (buffer-string) "\n"))
    (delete-file file)))

(defun kigou--end (windows place picks said)
  "Show WINDOWS as they were, insert PICKS at PLACE and tell what kigou SAID."
  (set-window-configuration windows)
  (when (buffer-live-p (marker-buffer place))
    (with-current-buffer (marker-buffer place)
      (goto-char place)
      (insert picks)))
  (unless (string-empty-p said)
    (message "%s" said)))

;;;###autoload
(defun kigou-insert ()
  "Pick symbols in the browser of kigou and insert them at point."
  (interactive "*")
  (let ((place (point-marker))
        (windows (current-window-configuration))
        (picks (make-temp-file "kigou"))
        (said (make-temp-file "kigou"))
        (buffer (generate-new-buffer "*kigou*")))
    (pop-to-buffer-same-window buffer)
    (delete-other-windows)
    ;; What the mode hooks there fails in buffers without a keymap of their own.
    (let ((menu-bar-update-hook menu-bar-update-hook))
      (term-mode))
    (term-exec buffer "kigou" "/bin/sh" nil
               (list "-c" "exec kigou --pick-to \"$1\" 2>\"$2\"" "sh" picks said))
    (set-process-sentinel (get-buffer-process buffer)
                          (lambda (process _event)
                            (unless (process-live-p process)
                              (kill-buffer buffer)
                              (kigou--end windows place
                                          (kigou--take picks) (kigou--take said)))))
    (term-char-mode)))

(provide 'kigou)

;;; kigou.el ends here
