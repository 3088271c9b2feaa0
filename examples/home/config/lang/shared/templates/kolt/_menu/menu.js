// Opens and closes the sub menus, moves the focus by arrow keys and marks the page that is shown.
// One sub menu is open at a time. There are few listeners, whatever the size of the menu.
(() => {
    'use strict';

    const STEPS = { ArrowRight: 1, ArrowDown: 1, ArrowLeft: -1, ArrowUp: -1 };

    // The style folds sub menus only when there is somebody to open them.
    document.documentElement.classList.add('js');

    const mainOf = (element) => element.closest('.main');
    const toggleOf = (main) => main.querySelector(':scope > .toggle');
    const subsOf = (toggle) => document.getElementById(toggle.getAttribute('aria-controls'));
    const isOpen = (toggle) => toggle.getAttribute('aria-expanded') === 'true';
    const openToggle = () => document.querySelector('.toggle[aria-expanded="true"]');
    const floats = (subs) => getComputedStyle(subs).position === 'absolute';

    // What takes the focus for an item: its link, else the button of its sub menu, else the link to its help.
    function controlOf(item) {
        const own = (selector) => item.querySelector(`:scope > ${selector}`);
        return own('a.entry') ?? own('.toggle') ?? own('.help');
    }

    function nextControl(item, step) {
        const sibling = (element) => (step > 0 ? element.nextElementSibling : element.previousElementSibling);
        for (let other = sibling(item); other; other = sibling(other)) {
            const control = controlOf(other);
            if (control) return control;
        }
        return null;
    }

    function firstControl(list, step) {
        const end = step > 0 ? list.firstElementChild : list.lastElementChild;
        return controlOf(end) ?? nextControl(end, step);
    }

    function close(toggle) {
        toggle?.setAttribute('aria-expanded', 'false');
    }

    // A sub menu that closes above must not pull the button away from under the finger.
    function keepInPlace(element, change) {
        const before = element.getBoundingClientRect().top;
        change();
        window.scrollBy(0, element.getBoundingClientRect().top - before);
    }

    function open(toggle) {
        keepInPlace(toggle, () => {
            close(openToggle());
            toggle.setAttribute('aria-expanded', 'true');
        });
        const subs = subsOf(toggle);
        if (floats(subs)) subs.scrollIntoView({ block: 'nearest' });
    }

    // A caption without a link opens the sub menu as the button behind it does.
    function clickedToggle(element) {
        const opener = element.closest('.opener');
        return opener ? toggleOf(mainOf(opener)) : element.closest('.toggle');
    }

    function handleClick(event) {
        const toggle = clickedToggle(event.target);
        if (toggle) {
            if (isOpen(toggle)) close(toggle);
            else open(toggle);
            return;
        }
        const opened = openToggle();
        if (opened && !mainOf(opened).contains(event.target)) close(opened);
    }

    // Only what covers other items goes by itself; a list in the flow of the page stays where the user left it.
    function handleFocus(event) {
        const opened = openToggle();
        if (opened && !mainOf(opened).contains(event.target) && floats(subsOf(opened))) close(opened);
    }

    function handleEscape() {
        const opened = openToggle();
        if (!opened) return false;
        close(opened);
        opened.focus();
        return true;
    }

    function targetInSubs(sub, key) {
        switch (key) {
            case 'Home': return firstControl(sub.parentElement, 1);
            case 'End': return firstControl(sub.parentElement, -1);
            case 'ArrowDown': return nextControl(sub, 1);
            case 'ArrowUp': return nextControl(sub, -1) ?? toggleOf(mainOf(sub));
            default: return nextControl(mainOf(sub), STEPS[key]);
        }
    }

    function targetInMains(main, key) {
        const toggle = toggleOf(main);
        switch (key) {
            case 'Home': return firstControl(main.parentElement, 1);
            case 'End': return firstControl(main.parentElement, -1);
            case 'ArrowDown':
                if (toggle && isOpen(toggle)) return firstControl(subsOf(toggle), 1);
                return nextControl(main, 1);
            default: return nextControl(main, STEPS[key]);
        }
    }

    function moveFocus(event) {
        const item = event.target.closest('.sub, .main');
        if (!item || !(event.key in STEPS || event.key === 'Home' || event.key === 'End')) return false;
        const target = item.matches('.sub') ? targetInSubs(item, event.key) : targetInMains(item, event.key);
        target?.focus();
        return true;
    }

    function handleKey(event) {
        if (event.ctrlKey || event.altKey || event.metaKey || event.shiftKey) return;
        const handled = event.key === 'Escape' ? handleEscape() : moveFocus(event);
        if (handled) event.preventDefault();
    }

    function markCurrent() {
        const links = [...document.querySelectorAll('a.entry')];
        const page = location.href.split('#', 1)[0];
        const exact = links.filter((link) => link.href === location.href);
        const current = exact.length > 0 ? exact : links.filter((link) => link.href === page);
        for (const link of document.querySelectorAll('[aria-current]')) link.removeAttribute('aria-current');
        for (const main of document.querySelectorAll('.main.holds-current')) main.classList.remove('holds-current');
        for (const link of current) {
            link.setAttribute('aria-current', 'page');
            mainOf(link).classList.add('holds-current');
        }
    }

    function start() {
        document.addEventListener('click', handleClick);
        document.addEventListener('focusin', handleFocus);
        document.addEventListener('keydown', handleKey);
        window.addEventListener('hashchange', markCurrent);
        markCurrent();
    }

    document.addEventListener('DOMContentLoaded', start);
})();
