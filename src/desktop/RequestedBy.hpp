#pragma once

namespace pagora {

// Whether a request comes from the page, or from a key or a button that the person pressed in it.
enum class RequestedBy : bool { Page, User };

}
