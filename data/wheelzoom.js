// wheelzoom(elements, {zoom, maxZoom}): the wheel zooms a picture at the pointer, dragging pans it,
// a double click shows all of it again. Needs nothing else and works from the disk. The picture
// becomes the background of its own element, so that page, links and image maps keep their places.
(function () {
  "use strict";

  var EMPTY = "data:image/svg+xml," + encodeURIComponent(
    "<svg xmlns='http://www.w3.org/2000/svg' width='1' height='1'/>");

  function enable(image, step, most) {
    var width, height;      // of the element
    var scale, left, top;   // of the picture in it
    var from = null;        // where a drag began

    function inside(value, least) {
      return Math.min(0, Math.max(least, value));
    }

    function show() {
      left = inside(left, width - width * scale);
      top = inside(top, height - height * scale);
      image.style.backgroundSize = width * scale + "px " + height * scale + "px";
      image.style.backgroundPosition = left + "px " + top + "px";
      image.style.cursor = scale > 1 ? "move" : "";
    }

    function all() {
      scale = 1;
      left = top = 0;
      show();
    }

    function begin() {
      var source = image.currentSrc || image.src;
      width = image.clientWidth;
      height = image.clientHeight;
      if (image.wheelzoom || !width || !height) return;
      image.wheelzoom = source;
      image.style.width = width + "px";
      image.style.height = height + "px";
      image.style.backgroundImage = 'url("' + source + '")';
      image.style.backgroundRepeat = "no-repeat";
      image.style.backgroundOrigin = "content-box";
      image.style.backgroundClip = "content-box";
      image.src = EMPTY;
      all();
    }

    function wheel(event) {
      if (!image.wheelzoom) return;
      event.preventDefault();
      var box = image.getBoundingClientRect();
      var x = event.clientX - box.left - image.clientLeft;
      var y = event.clientY - box.top - image.clientTop;
      var old = scale;
      scale *= event.deltaY < 0 ? 1 + step : 1 / (1 + step);
      scale = Math.min(most, Math.max(1, scale));
      left = x - (x - left) * scale / old;
      top = y - (y - top) * scale / old;
      show();
    }

    function drag(event) {
      if (!from) return;
      event.preventDefault();
      left += event.clientX - from.x;
      top += event.clientY - from.y;
      from = { x: event.clientX, y: event.clientY };
      show();
    }

    function drop() {
      from = null;
      document.removeEventListener("mousemove", drag);
      document.removeEventListener("mouseup", drop);
    }

    image.addEventListener("wheel", wheel, { passive: false });
    image.addEventListener("dblclick", function () { if (image.wheelzoom) all(); });
    image.addEventListener("mousedown", function (event) {
      if (!image.wheelzoom || event.button !== 0) return;
      event.preventDefault();
      from = { x: event.clientX, y: event.clientY };
      document.addEventListener("mousemove", drag);
      document.addEventListener("mouseup", drop);
    });
    // A script of the page may put another picture in: it takes the place of the one before.
    image.addEventListener("load", function () {
      if (image.src.indexOf("data:image/svg+xml") === 0) return;
      image.wheelzoom = null;
      begin();
    });
    if (image.complete) begin();
  }

  window.wheelzoom = function (elements, options) {
    var step = (options && options.zoom) || 0.1;
    var most = (options && options.maxZoom) || 10;
    var list = elements && elements.nodeName ? [elements] : elements || [];
    Array.prototype.forEach.call(list, function (element) {
      if (element.nodeName === "IMG") enable(element, step, most);
    });
    return elements;
  };
})();
